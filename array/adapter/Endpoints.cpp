#include "array/adapter/CimNames.h"
#include "array/adapter/InstanceBuilder.h"
#include "array/adapter/Paths.h"
#include "array/adapter/ThisArray.h"
#include "array/model/Rules.h"
#include "engine/DRAVKeys.h"
#include "engine/builders/TCPProtocolEndpoint.h"
#include "engine/builders/iSCSINode.h"
#include "engine/builders/iSCSIProtocolEndpoint.h"

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

namespace {

// An iSCSI target port is named by its node, ",t," and the portal group tag in four hexadecimal
// digits (RFC 7143 section 4.4.1); the array has one portal group.
const char portSuffix[] = ",t,0x0001";

String portName(const String& targetName) {
    String name = targetName;
    name.append(String(portSuffix));
    return name;
}

CIMObjectPath portPath(const String& targetName) {
    return array::pathInSystem(array::name::iSCSIProtocolEndpoint, array::name::Name,
                               portName(targetName));
}

CIMInstance portInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                         Uint32 targetId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const String targetName =
        array::fromUtf8(array::found(snapshot->target(targetId), targetId).name);

    array::InstanceBuilder builder(portPath(targetName), includeQualifiers, propertyList);
    builder.property(array::name::ElementName, targetName)
        .property(array::name::NameFormat, String("iSCSI Name"))
        .property(array::name::ProtocolIFType, Uint16(1)) // Other
        .property(array::name::OtherTypeDescription, String("iSCSI"))
        .property(array::name::ConnectionType, Uint16(7)) // iSCSI
        .property(array::name::Role, Uint16(3))           // Target
        .property(array::name::Identifier, String("0001"))
        .inService();
    return builder.instance();
}

} // namespace

iSCSIProtocolEndpointPath::iSCSIProtocolEndpointPath(const String& targetName)
    : CIMObjectPath(portPath(targetName)) {}

iSCSIProtocolEndpointInstance::iSCSIProtocolEndpointInstance(Boolean includeQualifiers,
                                                             const CIMPropertyList& propertyList,
                                                             Uint32 targetId)
    : CIMInstance(portInstance(includeQualifiers, propertyList, targetId)) {}

namespace {

CIMObjectPath endpointPath(const array::Snapshot& snapshot, Uint32 endpointId) {
    array::found(snapshot.endpoint(endpointId), endpointId);
    return array::pathInSystem(array::name::TCPProtocolEndpoint, array::name::Name,
                               DRAVObjectKey(endpointId));
}

CIMInstance endpointInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                             Uint32 endpointId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::InstanceBuilder builder(endpointPath(*snapshot, endpointId), includeQualifiers,
                                   propertyList);
    builder.property(array::name::ElementName, array::portalName(*snapshot, endpointId))
        .property(array::name::NameFormat, String("Address:Port"))
        .property(array::name::ProtocolIFType, Uint16(4111)) // TCP
        .property(array::name::PortNumber, Uint32(snapshot->endpoint(endpointId)->port))
        .inService();
    return builder.instance();
}

} // namespace

TCPProtocolEndpointPath::TCPProtocolEndpointPath(Uint32 endpointId)
    : CIMObjectPath(endpointPath(*array::currentSnapshot(), endpointId)) {}

TCPProtocolEndpointInstance::TCPProtocolEndpointInstance(Boolean includeQualifiers,
                                                         const CIMPropertyList& propertyList,
                                                         Uint32 endpointId)
    : CIMInstance(endpointInstance(includeQualifiers, propertyList, endpointId)) {}

} // namespace Pegasus
