#include "engine/builders/iSCSINode.h"

#include "array/Limits.h"
#include "array/builders/Current.h"
#include "array/builders/ElementNames.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"

namespace Pegasus {

namespace {

CIMObjectPath nodePath(const array::Snapshot& snapshot, Uint32 targetId) {
    array::found(snapshot.target(targetId), targetId);
    return array::pathInSystem(array::name::SCSIProtocolController, array::name::DeviceID,
                               DRAVObjectKey(targetId));
}

CIMInstance nodeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                         Uint32 targetId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::InstanceBuilder builder(nodePath(*snapshot, targetId), includeQualifiers, propertyList);
    const String name = array::targetName(*snapshot, targetId);
    builder.property(array::name::Name, name)
        .property(array::name::NameFormat, Uint16(3)) // iSCSI Name
        .property(array::name::ElementName, name)
        .property(array::name::MaxUnitsControlled, array::lunLimit)
        .inService();
    return builder.instance();
}

} // namespace

iSCSINodePath::iSCSINodePath(Uint32 targetId)
    : CIMObjectPath(nodePath(*array::currentSnapshot(), targetId)) {}

iSCSINodeInstance::iSCSINodeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                     Uint32 targetId)
    : CIMInstance(nodeInstance(includeQualifiers, propertyList, targetId)) {}

} // namespace Pegasus
