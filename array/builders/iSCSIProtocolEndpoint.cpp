#include "engine/builders/iSCSIProtocolEndpoint.h"

#include "array/builders/Current.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"

namespace Pegasus {

namespace {

// An iSCSI target port is named by its node, ",t," and the portal group tag in four hexadecimal
// digits (RFC 7143 section 4.4.1); the array has one portal group.
const char portSuffix[] = ",t,0x0001";

String portName(const String& targetName) {
    String name = targetName;
    name.append(String(portSuffix));
    return name;
}

CIMObjectPath endpointPath(const String& targetName) {
    return array::pathInSystem(array::name::iSCSIProtocolEndpoint, array::name::Name,
                               portName(targetName));
}

CIMInstance endpointInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                             Uint32 targetId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const String targetName =
        array::fromUtf8(array::found(snapshot->target(targetId), targetId).name);

    array::InstanceBuilder builder(endpointPath(targetName), includeQualifiers, propertyList);
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
    : CIMObjectPath(endpointPath(targetName)) {}

iSCSIProtocolEndpointInstance::iSCSIProtocolEndpointInstance(Boolean includeQualifiers,
                                                             const CIMPropertyList& propertyList,
                                                             Uint32 targetId)
    : CIMInstance(endpointInstance(includeQualifiers, propertyList, targetId)) {}

} // namespace Pegasus
