#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include "engine/Export.h"

namespace Pegasus {

// The association of a session ("GroupComponent") with one of its connections ("PartComponent").
class DRAV_EXPORT NetworkPipeCompositionPath : public CIMObjectPath {
public:
    NetworkPipeCompositionPath(const CIMName& associationClassName, Uint32 sessionId,
                               Uint32 connectionId);
};

class DRAV_EXPORT NetworkPipeCompositionInstance : public CIMInstance {
public:
    NetworkPipeCompositionInstance(const CIMName& associationClassName, Boolean includeQualifiers,
                                   Uint32 sessionId, Uint32 connectionId);
};

} // namespace Pegasus
