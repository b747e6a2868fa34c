#include "engine/builders/NetworkPipeComposition.h"

#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"
#include "engine/builders/iSCSIConnection.h"
#include "engine/builders/iSCSISession.h"

namespace Pegasus {

namespace {

struct Ends {
    Ends(Uint32 sessionId, Uint32 connectionId)
        : session(array::name::iSCSISession, sessionId),
          connection(array::name::iSCSIConnection, connectionId) {}

    const iSCSISessionPath session;
    const iSCSIConnectionPath connection;
};

CIMObjectPath compositionPath(const CIMName& associationClassName, const Ends& ends) {
    return array::pathOfAssociation(associationClassName, array::name::GroupComponent, ends.session,
                                    array::name::PartComponent, ends.connection);
}

CIMInstance compositionInstance(const CIMName& associationClassName, Boolean includeQualifiers,
                                const Ends& ends) {
    array::InstanceBuilder builder(compositionPath(associationClassName, ends), includeQualifiers,
                                   CIMPropertyList());
    builder.reference(array::name::GroupComponent, ends.session)
        .reference(array::name::PartComponent, ends.connection)
        .property(array::name::AggregationSequence, Uint16(0)); // no order
    return builder.instance();
}

} // namespace

NetworkPipeCompositionPath::NetworkPipeCompositionPath(const CIMName& associationClassName,
                                                       Uint32 sessionId, Uint32 connectionId)
    : CIMObjectPath(compositionPath(associationClassName, Ends(sessionId, connectionId))) {}

NetworkPipeCompositionInstance::NetworkPipeCompositionInstance(const CIMName& associationClassName,
                                                               Boolean includeQualifiers,
                                                               Uint32 sessionId,
                                                               Uint32 connectionId)
    : CIMInstance(compositionInstance(associationClassName, includeQualifiers,
                                      Ends(sessionId, connectionId))) {}

} // namespace Pegasus
