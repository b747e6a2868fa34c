#include <algorithm>
#include <utility>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

template<class T>
Array<T>::Array(Uint32 size) : Array(size, T()) {}

template<class T>
Array<T>::Array(Uint32 size, const T& x) {
    grow(size, x);
}

template<class T>
Array<T>::Array(const T* items, Uint32 size) {
    append(items, size);
}

template<class T>
Uint32 Array<T>::getCapacity() const {
    return _rep ? _rep->capacity : 0;
}

template<class T>
T& Array<T>::operator[](Uint32 index) {
    if (index >= size()) {
        throw IndexOutOfBoundsException();
    }
    _own(0);
    return _rep->items()[index];
}

template<class T>
const T& Array<T>::operator[](Uint32 index) const {
    if (index >= size()) {
        throw IndexOutOfBoundsException();
    }
    return _rep->items()[index];
}

// Makes the body ours alone, with room for so many elements.
template<class T>
void Array<T>::_own(std::size_t capacity) {
    if (_rep && !_rep->owners.shared() && _rep->capacity >= capacity) {
        return;
    }
    auto* rep = ArrayRep<T>::make(std::max<std::size_t>(capacity, size()));
    if (_rep) {
        _rep->transfer(0, size(), rep->items());
    }
    rep->size = size();
    ArrayRep<T>::dropOwner(std::exchange(_rep, rep));
}

// Room to grow, so that appending takes constant time on average.
template<class T>
std::size_t Array<T>::_capacityFor(std::size_t wanted) const {
    const std::size_t smallest = 4;
    return std::max({wanted, 2 * std::size_t(size()), smallest});
}

template<class T>
void Array<T>::clear() {
    if (_rep && !_rep->owners.shared()) {
        std::destroy_n(_rep->items(), size());
        _rep->size = 0;
    } else {
        *this = Array();
    }
}

template<class T>
void Array<T>::reserveCapacity(Uint32 capacity) {
    _own(capacity);
}

template<class T>
void Array<T>::grow(Uint32 n, const T& x) {
    const T copy = x; // `x` may be one of our own
    _own(std::size_t(size()) + n);
    std::uninitialized_fill_n(_rep->items() + size(), n, copy);
    _rep->size += n;
}

template<class T>
void Array<T>::append(const T& x) {
    insert(size(), &x, 1);
}

template<class T>
void Array<T>::append(T&& x) {
    T item(std::move(x)); // it may be one of our own
    if (!_rep || _rep->owners.shared() || _rep->size == _rep->capacity) {
        _own(_capacityFor(std::size_t(size()) + 1));
    }
    new (_rep->items() + size()) T(std::move(item));
    ++_rep->size;
}

template<class T>
void Array<T>::append(const T* x, Uint32 n) {
    insert(size(), x, n);
}

template<class T>
void Array<T>::appendArray(const Array& x) {
    insert(size(), x.getData(), x.size());
}

template<class T>
void Array<T>::prepend(const T& x) {
    insert(0, &x, 1);
}

template<class T>
void Array<T>::prepend(const T* x, Uint32 n) {
    insert(0, x, n);
}

template<class T>
void Array<T>::insert(Uint32 index, const T& x) {
    insert(index, &x, 1);
}

template<class T>
void Array<T>::insert(Uint32 index, const T* x, Uint32 n) {
    if (index > size()) {
        throw IndexOutOfBoundsException();
    }
    if (n == 0) {
        return;
    }
    const std::size_t wanted = std::size_t(size()) + n;
    if (index == size() && _rep && !_rep->owners.shared() && wanted <= _rep->capacity) {
        std::uninitialized_copy_n(x, n, _rep->items() + index);
    } else { // `x` may point into the old body: copied before that is taken apart
        auto* rep = ArrayRep<T>::make(_capacityFor(wanted));
        std::uninitialized_copy_n(x, n, rep->items() + index);
        if (_rep) {
            _rep->transfer(0, index, rep->items());
            _rep->transfer(index, size() - index, rep->items() + index + n);
        }
        ArrayRep<T>::dropOwner(std::exchange(_rep, rep));
    }
    _rep->size = static_cast<Uint32>(wanted);
}

template<class T>
void Array<T>::remove(Uint32 index) {
    remove(index, 1);
}

template<class T>
void Array<T>::remove(Uint32 index, Uint32 n) {
    if (n == 0) {
        return;
    }
    if (index > size() || n > size() - index) {
        throw IndexOutOfBoundsException();
    }
    _own(0);
    T* items = _rep->items();
    std::move(items + index + n, items + size(), items + index);
    std::destroy_n(items + size() - n, n);
    _rep->size -= n;
}

template class Array<Boolean>;
template class Array<Uint8>;
template class Array<Sint8>;
template class Array<Uint16>;
template class Array<Sint16>;
template class Array<Uint32>;
template class Array<Sint32>;
template class Array<Uint64>;
template class Array<Sint64>;
template class Array<Real32>;
template class Array<Real64>;
template class Array<Char16>;
template class Array<String>;
template class Array<CIMName>;
template class Array<CIMNamespaceName>;
template class Array<CIMKeyBinding>;
template class Array<CIMObjectPath>;
template class Array<CIMDateTime>;
template class Array<CIMObject>;
template class Array<CIMInstance>;
template class Array<CIMClass>;
template class Array<CIMMethod>;
template class Array<CIMParameter>;
template class Array<CIMParamValue>;
template class Array<CIMProperty>;
template class Array<CIMQualifier>;
template class Array<CIMValue>;

} // namespace Pegasus
