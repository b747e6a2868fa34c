#include "array/adapter/CimNames.h"
#include "array/adapter/CimValues.h"
#include "array/adapter/InstanceBuilder.h"
#include "array/adapter/Paths.h"
#include "array/adapter/ThisArray.h"
#include "engine/builders/iSCSISettings.h"

namespace Pegasus {

namespace {

// Settings are called as their target.
String settingsName(const array::Snapshot& snapshot, Uint32 settingsId) {
    return array::targetName(snapshot, snapshot.targetOfSettings(settingsId));
}

CIMInstance sessionSettings(const CIMName& className, Boolean includeQualifiers,
                            const CIMPropertyList& propertyList, Uint32 id) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const array::SessionParameters& proposed = array::found(snapshot->sessionSettings(id), id);

    array::InstanceBuilder builder(array::pathWithInstanceID(className, id), includeQualifiers,
                                   propertyList);
    builder.property(array::name::ElementName, settingsName(*snapshot, id))
        .property(array::name::MaxConnectionsPerSession, proposed.maxConnections)
        .property(array::name::InitialR2TPreference, array::flag(proposed.initialR2T))
        .property(array::name::ImmediateDataPreference, array::flag(proposed.immediateData))
        .property(array::name::MaxOutstandingR2T, proposed.maxOutstandingR2T)
        .property(array::name::MaxUnsolicitedFirstDataBurstLength, proposed.firstBurstLength)
        .property(array::name::MaxDataBurstLength, proposed.maxBurstLength)
        .property(array::name::DataSequenceInOrderPreference,
                  array::flag(proposed.dataSequenceInOrder))
        .property(array::name::DataPDUInOrderPreference, array::flag(proposed.dataPDUInOrder))
        .property(array::name::DefaultTimeToWaitPreference, proposed.defaultTime2Wait)
        .property(array::name::DefaultTimeToRetainPreference, proposed.defaultTime2Retain)
        .property(array::name::ErrorRecoveryLevelPreference, proposed.errorRecoveryLevel);
    return builder.instance();
}

CIMInstance connectionSettings(const CIMName& className, Boolean includeQualifiers,
                               const CIMPropertyList& propertyList, Uint32 id) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    const array::ConnectionParameters& proposed =
        array::found(snapshot->connectionSettings(id), id);

    array::InstanceBuilder builder(array::pathWithInstanceID(className, id), includeQualifiers,
                                   propertyList);
    builder.property(array::name::ElementName, settingsName(*snapshot, id))
        .property(array::name::MaxReceiveDataSegmentLength, proposed.maxRecvDataSegmentLength)
        .property(array::name::PrimaryHeaderDigestMethod,
                  array::smiFromDigest(proposed.primaryHeaderDigest))
        .property(array::name::PrimaryDataDigestMethod,
                  array::smiFromDigest(proposed.primaryDataDigest))
        .property(array::name::SecondaryHeaderDigestMethod,
                  array::smiFromDigest(proposed.secondaryHeaderDigest))
        .property(array::name::SecondaryDataDigestMethod,
                  array::smiFromDigest(proposed.secondaryDataDigest))
        .property(array::name::RequestingMarkersOnReceive, array::flag(proposed.markersOnReceive))
        .property(array::name::PrimaryAuthenticationMethod,
                  array::smiFromAuthSetting(proposed.primaryAuthMethod))
        .property(array::name::SecondaryAuthenticationMethod,
                  array::smiFromAuthSetting(proposed.secondaryAuthMethod));
    return builder.instance();
}

} // namespace

iSCSISessionSettingsInstance::iSCSISessionSettingsInstance(const CIMName& className,
                                                           Boolean includeQualifiers,
                                                           const CIMPropertyList& propertyList,
                                                           Uint32 settingsId)
    : CIMInstance(sessionSettings(className, includeQualifiers, propertyList, settingsId)) {}

iSCSIConnectionSettingsInstance::iSCSIConnectionSettingsInstance(
    const CIMName& className, Boolean includeQualifiers, const CIMPropertyList& propertyList,
    Uint32 settingsId)
    : CIMInstance(connectionSettings(className, includeQualifiers, propertyList, settingsId)) {}

} // namespace Pegasus
