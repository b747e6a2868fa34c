#include "engine/builders/iSCSISession.h"

#include "array/builders/Current.h"
#include "array/builders/ElementNames.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"
#include "array/builders/Values.h"

namespace Pegasus {

namespace {

CIMObjectPath sessionPath(const CIMName& className, const array::Snapshot& snapshot,
                          Uint32 sessionId) {
    array::found(snapshot.session(sessionId), sessionId);
    return array::pathWithInstanceID(className, sessionId);
}

CIMInstance sessionInstance(const CIMName& className, Boolean includeQualifiers,
                            const CIMPropertyList& propertyList, Uint32 sessionId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::InstanceBuilder builder(sessionPath(className, *snapshot, sessionId), includeQualifiers,
                                   propertyList);
    const array::Session& session = *snapshot->session(sessionId);
    const array::SessionParameters& agreed = session.parameters;
    const String initiator = array::initiatorName(*snapshot, sessionId);
    const auto connections = snapshot->countAssociated(sessionId, CLASSID_ISCSI_CONNECTION);

    builder.property(array::name::ElementName, initiator)
        .property(array::name::Directionality, Uint16(2)) // Bi-Directional
        .property(array::name::SessionType, Uint16(3))    // Normal
        .property(array::name::TSIH, Uint32(session.tsih))
        .property(array::name::EndPointName, initiator)
        .property(array::name::CurrentConnections, static_cast<Uint32>(connections))
        .property(array::name::InitialR2T, array::flag(agreed.initialR2T))
        .property(array::name::ImmediateData, array::flag(agreed.immediateData))
        .property(array::name::MaxOutstandingR2T, agreed.maxOutstandingR2T)
        .property(array::name::MaxUnsolicitedFirstDataBurstLength, agreed.firstBurstLength)
        .property(array::name::MaxDataBurstLength, agreed.maxBurstLength)
        .property(array::name::DataSequenceInOrder, array::flag(agreed.dataSequenceInOrder))
        .property(array::name::DataPDUInOrder, array::flag(agreed.dataPDUInOrder))
        .property(array::name::ErrorRecoveryLevel, agreed.errorRecoveryLevel)
        .property(array::name::MaxConnectionsPerSession, agreed.maxConnections)
        .property(array::name::DefaultTimeToWait, agreed.defaultTime2Wait)
        .property(array::name::DefaultTimeToRetain, agreed.defaultTime2Retain)
        .inService();
    return builder.instance();
}

} // namespace

iSCSISessionPath::iSCSISessionPath(const CIMName& className, Uint32 sessionId)
    : CIMObjectPath(sessionPath(className, *array::currentSnapshot(), sessionId)) {}

iSCSISessionInstance::iSCSISessionInstance(const CIMName& className, Boolean includeQualifiers,
                                           const CIMPropertyList& propertyList, Uint32 sessionId)
    : CIMInstance(sessionInstance(className, includeQualifiers, propertyList, sessionId)) {}

} // namespace Pegasus
