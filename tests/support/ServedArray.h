#pragma once

#include <functional>

#include "array/Array.h"
#include "array/model/ErrorCode.h"

namespace scripted {

// The array that this process's engine serves, without objects: in a state directory of its own,
// which is made at the first call and gone at exit. Ids that were given before are not given again.
array::Array& emptyServedArray();

// Why the array refuses a call of a provider, which must not be completed then.
array::ErrorCode refusal(const std::function<void()>& call);

} // namespace scripted
