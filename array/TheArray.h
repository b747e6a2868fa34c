#ifndef ARRAY_THE_ARRAY_H
#define ARRAY_THE_ARRAY_H

#include "array/Array.h"

namespace array {

// The array that this process's DRAVEngine serves: that of stateDirectory(), opened at the first
// call that succeeds. Throws as Array::open does, and tries again at the next call. From any
// thread.
Array& theArray();

} // namespace array

#endif
