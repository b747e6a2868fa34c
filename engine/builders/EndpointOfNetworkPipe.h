#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/String.h>

#include "engine/Export.h"

namespace Pegasus {

// The association of a target's iSCSI protocol endpoint ("Antecedent") with a session
// ("Dependent").
class DRAV_EXPORT EndpointOfNetworkPipePath : public CIMObjectPath {
public:
    EndpointOfNetworkPipePath(const String& targetName, const CIMName& pipeClassName,
                              Uint32 sessionId);
};

class DRAV_EXPORT EndpointOfNetworkPipeInstance : public CIMInstance {
public:
    EndpointOfNetworkPipeInstance(Boolean includeQualifiers, const String& targetName,
                                  const CIMName& pipeClassName, Uint32 sessionId);
};

} // namespace Pegasus
