#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/DRAVVolume.h"
#include "engine/Export.h"

namespace Pegasus {

// A storage volume. Id 0 gives the path of a volume whose record is gone; as a path only.
class DRAV_EXPORT StorageVolumePath : public CIMObjectPath {
public:
    explicit StorageVolumePath(Uint32 volumeId);
};

// From a record: one that need not stand in the engine, such as that of a volume that is gone.
class DRAV_EXPORT StorageVolumeInstance : public CIMInstance {
public:
    StorageVolumeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                          Uint32 volumeId);
    StorageVolumeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                          const DRAVVolume& volume);
};

} // namespace Pegasus
