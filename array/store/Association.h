#ifndef ARRAY_STORE_ASSOCIATION_H
#define ARRAY_STORE_ASSOCIATION_H

#include "array/Records.h"
#include "array/store/PersistentMap.h"

namespace array {

// For each owner the ids associated with it, in ascending order.
class Association {
public:
    const PersistentSet& of(Id owner) const {
        static const PersistentSet none;
        const PersistentSet* members = _members.find(owner);
        return members ? *members : none;
    }

    void add(Id owner, Id member) { setIn(_members, owner, member, NoValue()); }
    void remove(Id owner, Id member) { eraseIn(_members, owner, member); }

private:
    PersistentMap<PersistentSet> _members;
};

} // namespace array

#endif
