#include "engine/builders/NetworkPipeComposition.h"

#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"
#include "engine/builders/iSCSIConnection.h"
#include "engine/builders/iSCSISession.h"

namespace Pegasus {

namespace {

CIMInstance compositionInstance(const CIMName& associationClassName, Boolean includeQualifiers,
                                Uint32 sessionId, Uint32 connectionId) {
    const NetworkPipeCompositionPath path(associationClassName, sessionId, connectionId);
    array::InstanceBuilder builder(path, includeQualifiers, CIMPropertyList());
    builder
        .reference(array::name::GroupComponent,
                   iSCSISessionPath(array::name::iSCSISession, sessionId))
        .reference(array::name::PartComponent,
                   iSCSIConnectionPath(array::name::iSCSIConnection, connectionId))
        .property(array::name::AggregationSequence, Uint16(0)); // no order
    return builder.instance();
}

} // namespace

NetworkPipeCompositionPath::NetworkPipeCompositionPath(const CIMName& associationClassName,
                                                       Uint32 sessionId, Uint32 connectionId)
    : CIMObjectPath(array::pathOfAssociation(
          associationClassName, array::name::GroupComponent,
          iSCSISessionPath(array::name::iSCSISession, sessionId), array::name::PartComponent,
          iSCSIConnectionPath(array::name::iSCSIConnection, connectionId))) {}

NetworkPipeCompositionInstance::NetworkPipeCompositionInstance(const CIMName& associationClassName,
                                                               Boolean includeQualifiers,
                                                               Uint32 sessionId,
                                                               Uint32 connectionId)
    : CIMInstance(
          compositionInstance(associationClassName, includeQualifiers, sessionId, connectionId)) {}

} // namespace Pegasus
