#include "array/adapter/CimNames.h"
#include "array/adapter/InstanceBuilder.h"
#include "array/adapter/Paths.h"
#include "engine/builders/EndpointOfNetworkPipe.h"
#include "engine/builders/NetworkPipeComposition.h"
#include "engine/builders/iSCSIConnection.h"
#include "engine/builders/iSCSIProtocolEndpoint.h"
#include "engine/builders/iSCSISession.h"

namespace Pegasus {

namespace {

struct PipeEnds {
    PipeEnds(const String& targetName, const CIMName& pipeClassName, Uint32 sessionId)
        : endpoint(targetName), pipe(pipeClassName, sessionId) {}

    const iSCSIProtocolEndpointPath endpoint;
    const iSCSISessionPath pipe;
};

CIMObjectPath pipeEndPath(const PipeEnds& ends) {
    return array::pathOfAssociation(array::name::EndpointOfNetworkPipe, array::name::Antecedent,
                                    ends.endpoint, array::name::Dependent, ends.pipe);
}

CIMInstance pipeEndInstance(Boolean includeQualifiers, const PipeEnds& ends) {
    array::InstanceBuilder builder(pipeEndPath(ends), includeQualifiers, CIMPropertyList());
    builder.reference(array::name::Antecedent, ends.endpoint)
        .reference(array::name::Dependent, ends.pipe)
        .property(array::name::SourceOrSink, Uint16(4)); // Not Applicable: pipes go both ways
    return builder.instance();
}

} // namespace

EndpointOfNetworkPipePath::EndpointOfNetworkPipePath(const String& targetName,
                                                     const CIMName& pipeClassName, Uint32 sessionId)
    : CIMObjectPath(pipeEndPath(PipeEnds(targetName, pipeClassName, sessionId))) {}

EndpointOfNetworkPipeInstance::EndpointOfNetworkPipeInstance(Boolean includeQualifiers,
                                                             const String& targetName,
                                                             const CIMName& pipeClassName,
                                                             Uint32 sessionId)
    : CIMInstance(
          pipeEndInstance(includeQualifiers, PipeEnds(targetName, pipeClassName, sessionId))) {}

namespace {

struct Members {
    Members(Uint32 sessionId, Uint32 connectionId)
        : session(array::name::iSCSISession, sessionId),
          connection(array::name::iSCSIConnection, connectionId) {}

    const iSCSISessionPath session;
    const iSCSIConnectionPath connection;
};

CIMObjectPath compositionPath(const CIMName& associationClassName, const Members& members) {
    return array::pathOfAssociation(associationClassName, array::name::GroupComponent,
                                    members.session, array::name::PartComponent,
                                    members.connection);
}

CIMInstance compositionInstance(const CIMName& associationClassName, Boolean includeQualifiers,
                                const Members& members) {
    array::InstanceBuilder builder(compositionPath(associationClassName, members),
                                   includeQualifiers, CIMPropertyList());
    builder.reference(array::name::GroupComponent, members.session)
        .reference(array::name::PartComponent, members.connection)
        .property(array::name::AggregationSequence, Uint16(0)); // no order
    return builder.instance();
}

} // namespace

NetworkPipeCompositionPath::NetworkPipeCompositionPath(const CIMName& associationClassName,
                                                       Uint32 sessionId, Uint32 connectionId)
    : CIMObjectPath(compositionPath(associationClassName, Members(sessionId, connectionId))) {}

NetworkPipeCompositionInstance::NetworkPipeCompositionInstance(const CIMName& associationClassName,
                                                               Boolean includeQualifiers,
                                                               Uint32 sessionId,
                                                               Uint32 connectionId)
    : CIMInstance(compositionInstance(associationClassName, includeQualifiers,
                                      Members(sessionId, connectionId))) {}

} // namespace Pegasus
