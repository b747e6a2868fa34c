#include "engine/builders/StorageVolume.h"

#include "array/adapter/CimNames.h"
#include "array/adapter/InstanceBuilder.h"
#include "array/adapter/Paths.h"
#include "array/adapter/ThisArray.h"
#include "engine/DRAVKeys.h"

namespace Pegasus {

namespace {

constexpr std::uint64_t blockSize = 512; // bytes

struct VolumeValues {
    Uint32 id;
    String name;
    String elementName;
    std::uint64_t size;
    Uint32 status; // as DRAVVolume::state
};

VolumeValues valuesOf(Uint32 volumeId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const array::Volume& volume = array::found(snapshot->volume(volumeId), volumeId);
    return {volumeId, array::fromUtf8(volume.name), array::fromUtf8(volume.elementName),
            volume.size, volume.status};
}

VolumeValues valuesOf(const DRAVVolume& volume) {
    return {volume.objectID, volume.name, volume.elementName, volume.size, volume.state};
}

CIMObjectPath volumePath(Uint32 volumeId) {
    return array::pathInSystem(array::name::StorageVolume, array::name::DeviceID,
                               DRAVObjectKey(volumeId));
}

// A volume that is gone has a path too, by the id 0.
CIMObjectPath checkedPath(Uint32 volumeId) {
    if (volumeId != 0) {
        array::found(array::currentSnapshot()->volume(volumeId), volumeId);
    }
    return volumePath(volumeId);
}

// OK, or for a volume that is gone No Contact.
Uint16 operationalStatus(Uint32 status) {
    return status == 0 ? 2 : 12;
}

CIMInstance volumeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                           const VolumeValues& volume) {
    const CIMValue blocks = array::counter(volume.size / blockSize);

    array::InstanceBuilder builder(volumePath(volume.id), includeQualifiers, propertyList);
    builder.property(array::name::Name, volume.name)
        .property(array::name::NameFormat, Uint16(9))    // NAA
        .property(array::name::NameNamespace, Uint16(2)) // VPD83Type3
        .property(array::name::ElementName, volume.elementName)
        .property(array::name::BlockSize, array::counter(blockSize))
        .property(array::name::NumberOfBlocks, blocks)
        .property(array::name::ConsumableBlocks, blocks)
        .property(array::name::Access, Uint16(3)) // Read/Write Supported
        .property(array::name::Primordial, false)
        .inService(operationalStatus(volume.status));
    return builder.instance();
}

} // namespace

StorageVolumePath::StorageVolumePath(Uint32 volumeId) : CIMObjectPath(checkedPath(volumeId)) {}

StorageVolumeInstance::StorageVolumeInstance(Boolean includeQualifiers,
                                             const CIMPropertyList& propertyList, Uint32 volumeId)
    : CIMInstance(volumeInstance(includeQualifiers, propertyList, valuesOf(volumeId))) {}

StorageVolumeInstance::StorageVolumeInstance(Boolean includeQualifiers,
                                             const CIMPropertyList& propertyList,
                                             const DRAVVolume& volume)
    : CIMInstance(volumeInstance(includeQualifiers, propertyList, valuesOf(volume))) {}

} // namespace Pegasus
