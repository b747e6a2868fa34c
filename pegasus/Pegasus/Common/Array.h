#pragma once

#include <utility>

#include <Pegasus/Common/ArrayRep.h>
#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

// A growing sequence. The members are defined for the element types of this library only
// (Array.cpp has the list).
//
// An index beyond the end throws IndexOutOfBoundsException. A removed range must lie within the
// array: the same exception.
//
// Copies share one body until one of them is changed; taking an element by the non-const
// operator[] counts as a change. Threads: any number may read and copy the same Array; a change
// needs it to themselves.
template<class T>
class PEGASUS_COMMON_LINKAGE Array {
public:
    constexpr Array() noexcept = default;
    Array(const Array& x) noexcept : _rep(x._rep) {
        if (_rep) {
            _rep->owners.add();
        }
    }
    Array(Array&& x) noexcept : _rep(std::exchange(x._rep, nullptr)) {}
    Array(Uint32 size);
    Array(Uint32 size, const T& x);
    Array(const T* items, Uint32 size);
    ~Array() { ArrayRep<T>::dropOwner(_rep); }
    Array& operator=(const Array& x) noexcept {
        Array copy(x);
        swap(copy);
        return *this;
    }
    Array& operator=(Array&& x) noexcept {
        swap(x);
        return *this;
    }

    void clear(); // keeps the capacity of a body that no copy shares
    void reserveCapacity(Uint32 capacity);
    void grow(Uint32 size, const T& x);
    void swap(Array& x) { std::swap(_rep, x._rep); }

    Uint32 size() const { return _rep ? _rep->size : 0; }
    Uint32 getCapacity() const;
    const T* getData() const {
        alignas(T) static const char nothing[sizeof(T)] = {}; // an address, never read
        return _rep ? _rep->items() : reinterpret_cast<const T*>(nothing);
    }
    T& operator[](Uint32 index);
    const T& operator[](Uint32 index) const;

    void append(const T& x);
    void append(T&& x);
    void append(const T* x, Uint32 size);
    void appendArray(const Array& x);
    void prepend(const T& x);
    void prepend(const T* x, Uint32 size);
    void insert(Uint32 index, const T& x);
    void insert(Uint32 index, const T* x, Uint32 size);
    void remove(Uint32 index);
    void remove(Uint32 index, Uint32 size);

private:
    void _own(std::size_t capacity);
    std::size_t _capacityFor(std::size_t wanted) const;

    ArrayRep<T>* _rep = nullptr; // null: empty, without capacity
};

} // namespace Pegasus
