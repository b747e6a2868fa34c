#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/Export.h"

namespace Pegasus {

// A live session.
class DRAV_EXPORT iSCSISessionPath : public CIMObjectPath {
public:
    iSCSISessionPath(const CIMName& className, Uint32 sessionId);
};

class DRAV_EXPORT iSCSISessionInstance : public CIMInstance {
public:
    iSCSISessionInstance(const CIMName& className, Boolean includeQualifiers,
                         const CIMPropertyList& propertyList, Uint32 sessionId);
};

} // namespace Pegasus
