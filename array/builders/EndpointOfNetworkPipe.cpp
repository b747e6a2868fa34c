#include "engine/builders/EndpointOfNetworkPipe.h"

#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"
#include "engine/builders/iSCSIProtocolEndpoint.h"
#include "engine/builders/iSCSISession.h"

namespace Pegasus {

namespace {

CIMInstance pipeEndInstance(Boolean includeQualifiers, const String& targetName,
                            const CIMName& pipeClassName, Uint32 sessionId) {
    const EndpointOfNetworkPipePath path(targetName, pipeClassName, sessionId);
    array::InstanceBuilder builder(path, includeQualifiers, CIMPropertyList());
    builder.reference(array::name::Antecedent, iSCSIProtocolEndpointPath(targetName))
        .reference(array::name::Dependent, iSCSISessionPath(pipeClassName, sessionId))
        .property(array::name::SourceOrSink, Uint16(4)); // Not Applicable: pipes go both ways
    return builder.instance();
}

} // namespace

EndpointOfNetworkPipePath::EndpointOfNetworkPipePath(const String& targetName,
                                                     const CIMName& pipeClassName, Uint32 sessionId)
    : CIMObjectPath(
          array::pathOfAssociation(array::name::EndpointOfNetworkPipe, array::name::Antecedent,
                                   iSCSIProtocolEndpointPath(targetName), array::name::Dependent,
                                   iSCSISessionPath(pipeClassName, sessionId))) {}

EndpointOfNetworkPipeInstance::EndpointOfNetworkPipeInstance(Boolean includeQualifiers,
                                                             const String& targetName,
                                                             const CIMName& pipeClassName,
                                                             Uint32 sessionId)
    : CIMInstance(pipeEndInstance(includeQualifiers, targetName, pipeClassName, sessionId)) {}

} // namespace Pegasus
