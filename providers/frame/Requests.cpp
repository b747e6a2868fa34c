#include "providers/frame/Requests.h"

#include "engine/DRAVKeys.h"
#include "engine/NameConstants.h"

namespace Pegasus {

String keyValue(const CIMObjectPath& path, const CIMName& name) {
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    Uint32 i = 0;
    while (i < keys.size() && keys[i].getName() != name) {
        ++i;
    }
    return keys[i].getValue(); // throws past the last
}

// Wanted: see docs/contract.md, Keys by position.
Uint32 idFromFirstKey(const CIMObjectPath& path) {
    return DRAVObjectID(path.getKeyBindings()[0].getValue()).id;
}

Uint32 idFromDeviceID(const CIMObjectPath& path) {
    return DRAVObjectID(keyValue(path, PROPERTY_DeviceID)).id;
}

} // namespace Pegasus
