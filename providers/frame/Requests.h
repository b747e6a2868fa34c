#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

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

// What the key bindings of a requested path say. A key that isn't there is an
// IndexOutOfBoundsException.

// The value of the first key binding of a name.
String keyValue(const CIMObjectPath& path, const CIMName& name);

// The engine object id in the first key binding, whatever its name. A text that is no key text
// gives an id that names nothing.
Uint32 idFromFirstKey(const CIMObjectPath& path);

// The same for the key binding "DeviceID".
Uint32 idFromDeviceID(const CIMObjectPath& path);

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
