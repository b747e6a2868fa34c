#pragma once

#include <string_view>

#include "array/model/RecordTypes.h"

namespace array {

// True if the texts differ at most in the case of ASCII letters.
bool sameName(std::string_view a, std::string_view b);

// A hash of a name, the same for names that sameName() takes for one.
std::uint32_t hashOfName(std::string_view name);

// Finds objects by a name that the index itself does not keep: it maps hashes to serials, and
// the caller says whether a serial has the name meant.
class NameIndex {
public:
    void add(std::uint32_t hash, std::uint32_t serial) {
        if (!_first.contains(hash)) {
            _first.set(hash, serial);
            return;
        }
        PersistentSet others = othersOf(hash);
        others.set(serial, {});
        _others.set(hash, std::move(others));
    }

    void remove(std::uint32_t hash, std::uint32_t serial) {
        const std::uint32_t* first = _first.find(hash);
        if (!first) {
            return;
        }
        PersistentSet others = othersOf(hash);
        if (*first != serial) {
            others.erase(serial);
        } else if (others.empty()) {
            _first.erase(hash);
        } else {
            const std::uint32_t next = others.firstKey();
            others.erase(next);
            _first.set(hash, next);
        }
        if (others.empty()) {
            _others.erase(hash);
        } else {
            _others.set(hash, std::move(others));
        }
    }

    // The serial for which isMeant(serial) is true, 0 if there is none.
    template<class IsMeant>
    std::uint32_t find(std::uint32_t hash, const IsMeant& isMeant) const {
        const std::uint32_t* first = _first.find(hash);
        if (!first) {
            return 0;
        }
        if (isMeant(*first)) {
            return *first;
        }
        std::uint32_t found = 0;
        othersOf(hash).forEach([&](std::uint32_t serial, NoValue) {
            if (found == 0 && isMeant(serial)) {
                found = serial;
            }
        });
        return found;
    }

private:
    PersistentSet othersOf(std::uint32_t hash) const {
        const PersistentSet* others = _others.find(hash);
        return others ? *others : PersistentSet();
    }

    PersistentMap<std::uint32_t> _first;  // hash -> serial
    PersistentMap<PersistentSet> _others; // hash -> the rest of the serials, where hashes collide
};

} // namespace array
