#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

// Handles to things with distinct names, in the order in which they were added. An index beyond
// the end throws IndexOutOfBoundsException. Internal.
template<class T>
class NamedList {
public:
    // A name twice throws AlreadyExistsException, which says what `kind` of thing it is.
    void add(T x, const char* kind) {
        const CIMName& name = x.getName();
        if (find(name) != PEG_NOT_FOUND) {
            throw AlreadyExistsException(String(kind) + " \"" + name.getString() + "\"");
        }
        _items.append(std::move(x));
    }

    Uint32 find(const CIMName& name) const {
        const T* items = _items.getData();
        for (Uint32 i = 0; i < _items.size(); ++i) {
            if (items[i].getName().equal(name)) {
                return i;
            }
        }
        return PEG_NOT_FOUND;
    }

    const T& operator[](Uint32 index) const { return _items[index]; }
    void remove(Uint32 index) { _items.remove(index); }
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
    Array<T> _items;
};

} // namespace Pegasus
