#include "engine/builders/iSCSIConnection.h"

#include "array/builders/Current.h"
#include "array/builders/ElementNames.h"
#include "array/builders/InstanceBuilder.h"
#include "array/builders/Names.h"
#include "array/builders/Paths.h"
#include "array/builders/Values.h"

namespace Pegasus {

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
    const CIMValue markers = array::flag(agreed.markersOnReceive);

    builder.property(array::name::ElementName, array::portalName(*snapshot, connection.endpoint))
        .property(array::name::ConnectionID, Uint32(connection.cid))
        .property(array::name::MaxReceiveDataSegmentLength, agreed.maxRecvDataSegmentLength)
        .property(array::name::MaxTransmitDataSegmentLength, agreed.maxRecvDataSegmentLength)
        .property(array::name::HeaderDigestMethod, array::smiFromDigest(agreed.primaryHeaderDigest))
        .property(array::name::DataDigestMethod, array::smiFromDigest(agreed.primaryDataDigest))
        .property(array::name::ReceivingMarkers, markers)
        .property(array::name::SendingMarkers, markers)
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
