// The body of an Array: a counted header with the elements right behind it. Internal.

#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <type_traits>

#include <Pegasus/Common/OwnerCount.h>

namespace Pegasus {

// One alignas: of two that depend on T, g++ 12 keeps the last only.
template<class T>
struct alignas(std::max(alignof(T), alignof(OwnerCount))) ArrayRep {
    // Elements are copied in the middle of changes, which must not fail there.
    static_assert(std::is_nothrow_copy_constructible_v<T>);

    OwnerCount owners;
    Uint32 size;
    Uint32 capacity;

    T* items() { return reinterpret_cast<T*>(this + 1); }

    // One owner, no elements. Throws std::bad_alloc, also for more than 2^32 - 1 elements.
    static ArrayRep* make(std::size_t capacity) {
        if (capacity > Uint32(-1)) {
            throw std::bad_alloc();
        }
        void* place = ::operator new(sizeof(ArrayRep) + capacity * sizeof(T));
        return new (place) ArrayRep{{}, 0, static_cast<Uint32>(capacity)};
    }

    static void dropOwner(ArrayRep* rep) { // null has no owners
        if (rep && rep->owners.drop()) {
            std::destroy_n(rep->items(), rep->size);
            ::operator delete(rep);
        }
    }

    // `n` elements to a place where none are: moved out of a body that has no other owner.
    void transfer(Uint32 index, Uint32 n, T* place) {
        if (owners.shared()) {
            std::uninitialized_copy_n(items() + index, n, place);
        } else {
            std::uninitialized_move_n(items() + index, n, place);
        }
    }
};

} // namespace Pegasus
