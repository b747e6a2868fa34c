#include "array/adapter/CimNames.h"
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

template<class Parameters>
CIMInstance settings(const CIMName& className, Boolean includeQualifiers,
                     const CIMPropertyList& propertyList, const array::Snapshot& snapshot,
                     Uint32 id, const Parameters* proposed) {
    const Parameters& parameters = array::found(proposed, id);
    array::InstanceBuilder builder(array::pathWithInstanceID(className, id), includeQualifiers,
                                   propertyList);
    builder.property(array::name::ElementName, settingsName(snapshot, id)).proposed(parameters);
    return builder.instance();
}

CIMInstance sessionSettings(const CIMName& className, Boolean includeQualifiers,
                            const CIMPropertyList& propertyList, Uint32 id) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    return settings(className, includeQualifiers, propertyList, *snapshot, id,
                    snapshot->sessionSettings(id));
}

CIMInstance connectionSettings(const CIMName& className, Boolean includeQualifiers,
                               const CIMPropertyList& propertyList, Uint32 id) {
    const array::SnapshotPtr snapshot = array::currentSnapshot();
    return settings(className, includeQualifiers, propertyList, *snapshot, id,
                    snapshot->connectionSettings(id));
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
