#include "engine/builders/TCPProtocolEndpoint.h"

#include "array/builders/Current.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"

namespace Pegasus {

namespace {

CIMObjectPath endpointPath(Uint32 endpointId) {
    return array::pathInSystem(array::name::TCPProtocolEndpoint, array::name::Name,
                               DRAVObjectKey(endpointId));
}

// The portal as people write it; an IPv6 address stands in brackets.
String portalText(const array::Endpoint& endpoint) {
    const bool ipv6 = endpoint.address.find(':') != std::string::npos;
    const std::string address = ipv6 ? "[" + endpoint.address + "]" : endpoint.address;
    return array::fromUtf8(address + ":" + std::to_string(endpoint.port));
}

CIMInstance endpointInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                             Uint32 endpointId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const array::Endpoint& endpoint = array::found(snapshot->endpoint(endpointId), endpointId);

    array::InstanceBuilder builder(endpointPath(endpointId), includeQualifiers, propertyList);
    builder.property(array::name::ElementName, portalText(endpoint))
        .property(array::name::NameFormat, String("Address:Port"))
        .property(array::name::ProtocolIFType, Uint16(4111)) // TCP
        .property(array::name::PortNumber, Uint32(endpoint.port))
        .inService();
    return builder.instance();
}

} // namespace

TCPProtocolEndpointPath::TCPProtocolEndpointPath(Uint32 endpointId)
    : CIMObjectPath(endpointPath(endpointId)) {
    array::found(array::currentSnapshot()->endpoint(endpointId), endpointId);
}

TCPProtocolEndpointInstance::TCPProtocolEndpointInstance(Boolean includeQualifiers,
                                                         const CIMPropertyList& propertyList,
                                                         Uint32 endpointId)
    : CIMInstance(endpointInstance(includeQualifiers, propertyList, endpointId)) {}

} // namespace Pegasus
