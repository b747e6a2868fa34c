#include "engine/builders/iSCSINode.h"

#include "array/Limits.h"
#include "array/builders/Current.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"

namespace Pegasus {

namespace {

CIMObjectPath nodePath(Uint32 targetId) {
    return array::pathInSystem(array::name::SCSIProtocolController, array::name::DeviceID,
                               DRAVObjectKey(targetId));
}

CIMInstance nodeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                         Uint32 targetId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const array::Target& target = array::found(snapshot->target(targetId), targetId);
    const String name = array::fromUtf8(target.name);

    array::InstanceBuilder builder(nodePath(targetId), includeQualifiers, propertyList);
    builder.property(array::name::Name, name)
        .property(array::name::NameFormat, Uint16(3)) // iSCSI Name
        .property(array::name::ElementName, name)
        .property(array::name::MaxUnitsControlled, array::lunLimit)
        .inService();
    return builder.instance();
}

} // namespace

iSCSINodePath::iSCSINodePath(Uint32 targetId) : CIMObjectPath(nodePath(targetId)) {
    array::found(array::currentSnapshot()->target(targetId), targetId);
}

iSCSINodeInstance::iSCSINodeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                     Uint32 targetId)
    : CIMInstance(nodeInstance(includeQualifiers, propertyList, targetId)) {}

} // namespace Pegasus
