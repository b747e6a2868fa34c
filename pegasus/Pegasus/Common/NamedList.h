#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <new>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

// The places of names in a list, which is too long to be searched. Internal.
//
// A thing may get another name while it is in a list, which cannot know: from then on no place that
// was noted before holds.
class NamePlaces {
public:
    void add(const CIMName& name, Uint32 place) { _places.emplace(name.getString(), place); }

    Uint32 find(const CIMName& name) const {
        const auto found = _places.find(name.getString());
        return found == _places.end() ? PEG_NOT_FOUND : found->second;
    }

    bool hold() const { return _renamedBefore == renamed.load(std::memory_order_acquire); }

    static void somethingRenamed() { renamed.fetch_add(1, std::memory_order_release); }

private:
    struct Before {
        bool operator()(const String& left, const String& right) const {
            return String::compareNoCase(left, right) < 0;
        }
    };

    inline static std::atomic<std::size_t> renamed{0}; // how many things ever were

    const std::size_t _renamedBefore = renamed.load(std::memory_order_acquire);
    std::map<String, Uint32, Before> _places; // sorted: nobody can make its search slow
};

// Handles to things with distinct names, in the order in which they were added. An index beyond
// the end throws IndexOutOfBoundsException. Internal.
template<class T>
class NamedList {
public:
    // A name twice throws AlreadyExistsException, which says what `kind` of thing it is.
    void add(T x, const char* kind) {
        notePlacesIfLong();
        const CIMName& name = x.getName();
        if (find(name) != PEG_NOT_FOUND) {
            throw AlreadyExistsException(String(kind) + " \"" + name.getString() + "\"");
        }
        _items.append(std::move(x));
        if (_places) {
            noteLast();
        }
    }

    Uint32 find(const CIMName& name) const {
        if (_places && _places->hold()) {
            return _places->find(name);
        }
        const T* items = _items.getData();
        for (Uint32 i = 0; i < _items.size(); ++i) {
            if (items[i].getName().equal(name)) {
                return i;
            }
        }
        return PEG_NOT_FOUND;
    }

    const T& operator[](Uint32 index) const { return _items[index]; }
    void remove(Uint32 index) {
        _items.remove(index);
        _places.reset();
    }
    Uint32 size() const { return _items.size(); }

    bool identical(const NamedList& other) const {
        if (size() != other.size()) {
            return false;
        }
        for (Uint32 i = 0; i < size(); ++i) {
            if (!_items[i].identical(other._items[i])) {
                return false;
            }
        }
        return true;
    }

    NamedList clone() const {
        NamedList copy;
        copy._items.reserveCapacity(size());
        for (Uint32 i = 0; i < size(); ++i) {
            copy._items.append(_items[i].clone());
        }
        return copy;
    }

private:
    static constexpr Uint32 quickToSearch = 32;

    void notePlacesIfLong() {
        if (size() >= quickToSearch && !(_places && _places->hold())) {
            notePlaces();
        }
    }

    void notePlaces() {
        auto places = std::make_unique<NamePlaces>();
        for (Uint32 i = 0; i < size(); ++i) {
            places->add(_items[i].getName(), i); // of a name twice the first counts
        }
        _places = std::move(places);
    }

    // Without memory for it, the list is searched.
    void noteLast() {
        try {
            _places->add(_items[size() - 1].getName(), size() - 1);
        } catch (const std::bad_alloc&) {
            _places.reset();
        }
    }

    Array<T> _items;
    std::unique_ptr<NamePlaces> _places; // of all items, or none
};

} // namespace Pegasus
