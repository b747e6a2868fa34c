#include "engine/builders/EndpointOfNetworkPipe.h"

#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"
#include "engine/builders/iSCSIProtocolEndpoint.h"
#include "engine/builders/iSCSISession.h"

namespace Pegasus {

namespace {

struct Ends {
    Ends(const String& targetName, const CIMName& pipeClassName, Uint32 sessionId)
        : endpoint(targetName), pipe(pipeClassName, sessionId) {}

    const iSCSIProtocolEndpointPath endpoint;
    const iSCSISessionPath pipe;
};

CIMObjectPath pipeEndPath(const Ends& ends) {
    return array::pathOfAssociation(array::name::EndpointOfNetworkPipe, array::name::Antecedent,
                                    ends.endpoint, array::name::Dependent, ends.pipe);
}

CIMInstance pipeEndInstance(Boolean includeQualifiers, const Ends& ends) {
    array::InstanceBuilder builder(pipeEndPath(ends), includeQualifiers, CIMPropertyList());
    builder.reference(array::name::Antecedent, ends.endpoint)
        .reference(array::name::Dependent, ends.pipe)
        .property(array::name::SourceOrSink, Uint16(4)); // Not Applicable: pipes go both ways
    return builder.instance();
}

} // namespace

EndpointOfNetworkPipePath::EndpointOfNetworkPipePath(const String& targetName,
                                                     const CIMName& pipeClassName, Uint32 sessionId)
    : CIMObjectPath(pipeEndPath(Ends(targetName, pipeClassName, sessionId))) {}

EndpointOfNetworkPipeInstance::EndpointOfNetworkPipeInstance(Boolean includeQualifiers,
                                                             const String& targetName,
                                                             const CIMName& pipeClassName,
                                                             Uint32 sessionId)
    : CIMInstance(pipeEndInstance(includeQualifiers, Ends(targetName, pipeClassName, sessionId))) {}

} // namespace Pegasus
