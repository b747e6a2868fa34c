// Values that were sent without a type.
#pragma once

#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>

namespace smisd {

// The value in its declared type, where it is a string or an array of strings; a value of another
// type stays as it is, a null one becomes a null of the declared type.
//
// Throws CIM_ERR_TYPE_MISMATCH without a text for an array in place of a scalar or the other way
// round, and CIM_ERR_INVALID_PARAMETER for a text that is no literal of the type.
Pegasus::CIMValue declaredValue(const Pegasus::CIMValue& value, Pegasus::CIMType type,
                                bool isArray);

} // namespace smisd
