#include "providers/frame/Keys.h"

#include <Pegasus/Common/Array.h>

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

Uint32 idFromFirstKey(const CIMObjectPath& path) {
    return DRAVObjectID(path.getKeyBindings()[0].getValue()).id;
}

Uint32 idFromDeviceID(const CIMObjectPath& path) {
    return DRAVObjectID(keyValue(path, PROPERTY_DeviceID)).id;
}

} // namespace Pegasus
