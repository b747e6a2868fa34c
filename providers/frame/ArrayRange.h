#pragma once

#include <Pegasus/Common/Array.h>

namespace Pegasus {

// Lets a range-based for walk an OpenPegasus array, which has no iterators.

template<class T>
const T* begin(const Array<T>& array) {
    return array.getData();
}

template<class T>
const T* end(const Array<T>& array) {
    return array.getData() + array.size();
}

} // namespace Pegasus
