#ifndef Pegasus_Array_h
#define Pegasus_Array_h

#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

template<class T>
struct ArrayRep;

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
    Array(const Array& x) noexcept;
    Array(Array&& x) noexcept;
    Array(Uint32 size);
    Array(Uint32 size, const T& x);
    Array(const T* items, Uint32 size);
    ~Array();
    Array& operator=(const Array& x) noexcept;
    Array& operator=(Array&& x) noexcept;

    void clear(); // keeps the capacity of a body that no copy shares
    void reserveCapacity(Uint32 capacity);
    void grow(Uint32 size, const T& x);
    void swap(Array& x);

    Uint32 size() const;
    Uint32 getCapacity() const;
    const T* getData() const;
    T& operator[](Uint32 index);
    const T& operator[](Uint32 index) const;

    void append(const T& x);
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

    ArrayRep<T>* _rep = nullptr; // null: empty, without capacity
};

} // namespace Pegasus

#endif
