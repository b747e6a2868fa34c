#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/String.h>

#include "engine/Export.h"

namespace Pegasus {

// The iSCSI protocol endpoint of a target. Its "Name" is the target's iSCSI name and a suffix of 9
// characters.
class DRAV_EXPORT iSCSIProtocolEndpointPath : public CIMObjectPath {
public:
    explicit iSCSIProtocolEndpointPath(const String& targetName);
};

class DRAV_EXPORT iSCSIProtocolEndpointInstance : public CIMInstance {
public:
    iSCSIProtocolEndpointInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                  Uint32 targetId);
};

} // namespace Pegasus
