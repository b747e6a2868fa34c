#include "array/adapter/CimNames.h"
#include "array/adapter/InstanceBuilder.h"
#include "array/adapter/Paths.h"
#include "array/adapter/ThisArray.h"
#include "engine/builders/iSCSIConnection.h"
#include "engine/builders/iSCSISession.h"

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
    const String initiator = array::initiatorName(*snapshot, sessionId);
    const auto connections = snapshot->countAssociated(sessionId, CLASSID_ISCSI_CONNECTION);

    builder.property(array::name::ElementName, initiator)
        .property(array::name::Directionality, Uint16(2)) // Bi-Directional
        .property(array::name::SessionType, Uint16(3))    // Normal
        .property(array::name::TSIH, Uint32(session.tsih))
        .property(array::name::EndPointName, initiator)
        .property(array::name::CurrentConnections, static_cast<Uint32>(connections))
        .agreed(session.parameters)
        .inService();
    return builder.instance();
}

} // namespace

iSCSISessionPath::iSCSISessionPath(const CIMName& className, Uint32 sessionId)
    : CIMObjectPath(sessionPath(className, *array::currentSnapshot(), sessionId)) {}

iSCSISessionInstance::iSCSISessionInstance(const CIMName& className, Boolean includeQualifiers,
                                           const CIMPropertyList& propertyList, Uint32 sessionId)
    : CIMInstance(sessionInstance(className, includeQualifiers, propertyList, sessionId)) {}

namespace {

CIMObjectPath connectionPath(const CIMName& className, const array::Snapshot& snapshot,
                             Uint32 connectionId) {
    array::found(snapshot.connection(connectionId), connectionId);
    return array::pathWithInstanceID(className, connectionId);
}

// "AuthenticationMethodUsed" has a value map of its own: 2 No Authentication, 4 CHAP.
Uint16 methodUsed(const array::Connection& connection) {
    return connection.authMethod == DRAV_AUTH_CHAP ? 4 : 2;
}

CIMInstance connectionInstance(const CIMName& className, Boolean includeQualifiers,
                               const CIMPropertyList& propertyList, Uint32 connectionId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::InstanceBuilder builder(connectionPath(className, *snapshot, connectionId),
                                   includeQualifiers, propertyList);
    const array::Connection& connection = *snapshot->connection(connectionId);
    const array::ConnectionParameters& agreed = connection.parameters;

    builder.property(array::name::ElementName, array::portalName(*snapshot, connection.endpoint))
        .property(array::name::ConnectionID, Uint32(connection.cid))
        .agreed(agreed)
        .property(array::name::MaxTransmitDataSegmentLength, agreed.maxRecvDataSegmentLength)
        .property(array::name::SendingMarkers, agreed.markersOnReceive != 0)
        .property(array::name::AuthenticationMethodUsed, methodUsed(connection))
        .property(array::name::MutualAuthentication, connection.mutualAuth)
        .inService();
    return builder.instance();
}

} // namespace

iSCSIConnectionPath::iSCSIConnectionPath(const CIMName& className, Uint32 connectionId)
    : CIMObjectPath(connectionPath(className, *array::currentSnapshot(), connectionId)) {}

iSCSIConnectionInstance::iSCSIConnectionInstance(const CIMName& className,
                                                 Boolean includeQualifiers,
                                                 const CIMPropertyList& propertyList,
                                                 Uint32 connectionId)
    : CIMInstance(connectionInstance(className, includeQualifiers, propertyList, connectionId)) {}

} // namespace Pegasus
