#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/Export.h"

namespace Pegasus {

// A connection of a live session.
class DRAV_EXPORT iSCSIConnectionPath : public CIMObjectPath {
public:
    iSCSIConnectionPath(const CIMName& className, Uint32 connectionId);
};

class DRAV_EXPORT iSCSIConnectionInstance : public CIMInstance {
public:
    iSCSIConnectionInstance(const CIMName& className, Boolean includeQualifiers,
                            const CIMPropertyList& propertyList, Uint32 connectionId);
};

} // namespace Pegasus
