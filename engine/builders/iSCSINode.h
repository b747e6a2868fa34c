#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/Export.h"

namespace Pegasus {

// The SCSI protocol controller of a target. Its "DeviceID" is the target's key text.
class DRAV_EXPORT iSCSINodePath : public CIMObjectPath {
public:
    explicit iSCSINodePath(Uint32 targetId);
};

class DRAV_EXPORT iSCSINodeInstance : public CIMInstance {
public:
    iSCSINodeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                      Uint32 targetId);
};

} // namespace Pegasus
