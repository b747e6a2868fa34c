#pragma once

#include <algorithm>

#include <Pegasus/Common/CIMPropertyList.h>

namespace Pegasus {

// Names found in a property list, in a time that hardly depends on its length. Internal.
struct PropertyListAccess {
    // Lists that are worth sorting.
    static bool isLong(const CIMPropertyList& list) { return list._sorted != nullptr; }

    // Calls `use` with each place of the name, the first one first.
    template<class Use>
    static void eachPlace(const CIMPropertyList& list, const CIMName& name, Use use) {
        if (!isLong(list)) {
            for (Uint32 i = 0; i < list.size(); ++i) {
                if (list[i].equal(name)) {
                    use(i);
                }
            }
            return;
        }
        const CIMName* names = list._names.getData();
        const auto [first, last] = std::equal_range(list._sorted->begin(), list._sorted->end(),
                                                    Wanted{name}, Before{names});
        std::for_each(first, last, use);
    }

    static bool contains(const CIMPropertyList& list, const CIMName& name) {
        bool found = false;
        eachPlace(list, name, [&](Uint32) { found = true; });
        return found;
    }

private:
    friend class CIMPropertyList;

    struct Wanted {
        const CIMName& name;
    };

    // Compares names at places of a list with each other, and with the one that is wanted.
    struct Before {
        const CIMName* names;

        const CIMName& nameOf(Uint32 place) const { return names[place]; }
        const CIMName& nameOf(const Wanted& wanted) const { return wanted.name; }

        template<class Left, class Right>
        bool operator()(const Left& left, const Right& right) const {
            return String::compareNoCase(nameOf(left).getString(), nameOf(right).getString()) < 0;
        }
    };
};

} // namespace Pegasus
