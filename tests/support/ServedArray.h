#ifndef TESTS_SUPPORT_SERVED_ARRAY_H
#define TESTS_SUPPORT_SERVED_ARRAY_H

#include "array/Array.h"

namespace scripted {

// The array that this process's engine serves, without objects: in a state directory of its own,
// which is made at the first call and gone at exit. Ids that were given before are not given again.
array::Array& emptyServedArray();

} // namespace scripted

#endif
