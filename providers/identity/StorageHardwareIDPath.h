#pragma once

#include "providers/frame/Names.h"
#include "providers/frame/Paths.h"

namespace Pegasus {

// The one form in which every provider names a host.
inline CIMObjectPath storageHardwareIDPath(Uint32 initiatorId) {
    return modulePath(CLASS_StorageHardwareID, PROPERTY_InstanceID, initiatorId);
}

} // namespace Pegasus
