#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/Export.h"

namespace Pegasus {

// The login parameters that a target proposes, by the ids of its settings.
class DRAV_EXPORT iSCSISessionSettingsInstance : public CIMInstance {
public:
    iSCSISessionSettingsInstance(const CIMName& className, Boolean includeQualifiers,
                                 const CIMPropertyList& propertyList, Uint32 settingsId);
};

class DRAV_EXPORT iSCSIConnectionSettingsInstance : public CIMInstance {
public:
    iSCSIConnectionSettingsInstance(const CIMName& className, Boolean includeQualifiers,
                                    const CIMPropertyList& propertyList, Uint32 settingsId);
};

} // namespace Pegasus
