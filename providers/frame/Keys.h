#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// What the key bindings of a requested path say. A key that isn't there is an
// IndexOutOfBoundsException; a text that is no engine key is the engine's error.

// The value of the first key binding of a name.
String keyValue(const CIMObjectPath& path, const CIMName& name);

// The engine object id in the first key binding, whatever its name.
Uint32 idFromFirstKey(const CIMObjectPath& path);

// The engine object id in the key binding "DeviceID".
Uint32 idFromDeviceID(const CIMObjectPath& path);

} // namespace Pegasus
