#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

#include "providers/frame/ArrayRange.h"

namespace Pegasus {

// The input parameter of exactly this name: its last value if it was given twice, T() if it was not
// given. A value of another type is a TypeMismatchException.
template<class T>
T inParameter(const Array<CIMParamValue>& inParameters, const String& name) {
    T value{};
    for (const CIMParamValue& parameter : inParameters) {
        if (parameter.getParameterName() == name) {
            parameter.getValue().get(value);
        }
    }
    return value;
}

} // namespace Pegasus
