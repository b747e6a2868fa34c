#include "engine/builders/Statistics.h"

#include "array/adapter/CimNames.h"
#include "array/adapter/InstanceBuilder.h"
#include "array/adapter/Paths.h"
#include "array/adapter/ThisArray.h"

namespace Pegasus {

namespace {

using array::counter;

void addLastLoginFailure(array::InstanceBuilder& builder, const array::LoginStatistics& logins) {
    if (logins.lastFailureType == 0) {
        return;
    }
    builder.property(array::name::LastLoginFailureTime, array::dateTime(logins.lastFailureTime))
        .property(array::name::LastLoginFailureType, Uint16(logins.lastFailureType))
        .property(array::name::LastLoginFailureRemoteNodeName,
                  array::fromUtf8(logins.lastFailureInitiator));
}

CIMInstance loginStatistics(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                            Uint32 targetId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::found(snapshot->target(targetId), targetId);
    const array::LoginStatistics logins = snapshot->loginStatistics(targetId);

    array::InstanceBuilder builder(
        array::pathWithInstanceID(array::name::iSCSILoginStatistics, targetId), includeQualifiers,
        propertyList);
    builder.property(array::name::ElementName, array::targetName(*snapshot, targetId))
        .property(array::name::LoginFailures, counter(logins.failures()))
        .property(array::name::SuccessfulLogins, counter(logins.successfulLogins))
        .property(array::name::NegotiationLoginFailures, counter(logins.negotiationFailures))
        .property(array::name::AuthenticationLoginFailures, counter(logins.authenticationFailures))
        .property(array::name::AuthorizationLoginFailures, counter(logins.authorizationFailures))
        .property(array::name::LoginRedirects, counter(logins.redirects))
        .property(array::name::OtherLoginFailures, counter(logins.otherFailures))
        .property(array::name::NormalLogouts, counter(logins.normalLogouts))
        .property(array::name::OtherLogouts, counter(logins.otherLogouts));
    addLastLoginFailure(builder, logins);
    return builder.instance();
}

CIMInstance sessionFailures(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                            Uint32 targetId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::found(snapshot->target(targetId), targetId);
    const array::SessionFailures failures = snapshot->sessionFailures(targetId);

    array::InstanceBuilder builder(
        array::pathWithInstanceID(array::name::iSCSISessionFailures, targetId), includeQualifiers,
        propertyList);
    builder.property(array::name::ElementName, array::targetName(*snapshot, targetId))
        .property(array::name::SessionFailures, counter(failures.failures()))
        .property(array::name::SessionDigestFailures, counter(failures.digest))
        .property(array::name::SessionConnectionTimeoutFailures,
                  counter(failures.connectionTimeout))
        .property(array::name::SessionFormatErrors, counter(failures.format));
    if (failures.lastType != 0) {
        builder.property(array::name::LastSessionFailureType, Uint16(failures.lastType))
            .property(array::name::LastSessionFailureRemoteNodeName,
                      array::fromUtf8(failures.lastInitiator));
    }
    return builder.instance();
}

CIMInstance sessionStatistics(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                              Uint32 sessionId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::found(snapshot->session(sessionId), sessionId);
    const array::SessionStatistics statistics = snapshot->sessionStatistics(sessionId);

    array::InstanceBuilder builder(
        array::pathWithInstanceID(array::name::iSCSISessionStatistics, sessionId),
        includeQualifiers, propertyList);
    builder.property(array::name::ElementName, array::initiatorName(*snapshot, sessionId))
        .property(array::name::CommandPDUsTransferred, counter(statistics.commandPDUs))
        .property(array::name::ResponsePDUsTransferred, counter(statistics.responsePDUs))
        .property(array::name::BytesTransmitted, counter(statistics.bytesTransmitted))
        .property(array::name::BytesReceived, counter(statistics.bytesReceived))
        .property(array::name::DigestErrors, counter(statistics.digestErrors))
        .property(array::name::ConnectionTimeoutErrors,
                  counter(statistics.connectionTimeoutErrors));
    return builder.instance();
}

CIMInstance interfaceStatistics(Boolean includeQualifiers, Uint32 endpointId) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    array::found(snapshot->endpoint(endpointId), endpointId);
    const array::InterfaceStatistics statistics = snapshot->interfaceStatistics(endpointId);

    array::InstanceBuilder builder(
        array::pathWithInstanceID(array::name::MACStatistics, endpointId), includeQualifiers,
        CIMPropertyList());
    builder.property(array::name::ElementName, array::portalName(*snapshot, endpointId))
        .property(array::name::FramesReceived, counter(statistics.framesReceived))
        .property(array::name::FramesSent, counter(statistics.framesSent))
        .property(array::name::OctetsReceived, counter(statistics.octetsReceived))
        .property(array::name::OctetsSent, counter(statistics.octetsSent))
        .property(array::name::ReceiveErrors, counter(statistics.receiveErrors))
        .property(array::name::SendErrors, counter(statistics.sendErrors))
        .property(array::name::ReceiveDiscards, counter(statistics.receiveDiscards))
        .property(array::name::SendDiscards, counter(statistics.sendDiscards));
    return builder.instance();
}

} // namespace

iSCSILoginStatisticsInstance::iSCSILoginStatisticsInstance(Boolean includeQualifiers,
                                                           const CIMPropertyList& propertyList,
                                                           Uint32 targetId)
    : CIMInstance(loginStatistics(includeQualifiers, propertyList, targetId)) {}

iSCSISessionFailuresInstance::iSCSISessionFailuresInstance(Boolean includeQualifiers,
                                                           const CIMPropertyList& propertyList,
                                                           Uint32 targetId)
    : CIMInstance(sessionFailures(includeQualifiers, propertyList, targetId)) {}

iSCSISessionStatisticsInstance::iSCSISessionStatisticsInstance(Boolean includeQualifiers,
                                                               const CIMPropertyList& propertyList,
                                                               Uint32 sessionId)
    : CIMInstance(sessionStatistics(includeQualifiers, propertyList, sessionId)) {}

MACStatisticsInstance::MACStatisticsInstance(Boolean includeQualifiers, Uint32 endpointId)
    : CIMInstance(interfaceStatistics(includeQualifiers, endpointId)) {}

} // namespace Pegasus
