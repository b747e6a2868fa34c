#include "engine/builders/TCPProtocolEndpoint.h"

#include "array/builders/Current.h"
#include "array/builders/ElementNames.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"

namespace Pegasus {

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
