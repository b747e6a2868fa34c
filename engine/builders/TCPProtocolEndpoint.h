#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/Export.h"

namespace Pegasus {

// A TCP endpoint (network portal). Its "Name" is the endpoint's key text.
class DRAV_EXPORT TCPProtocolEndpointPath : public CIMObjectPath {
public:
    explicit TCPProtocolEndpointPath(Uint32 endpointId);
};

class DRAV_EXPORT TCPProtocolEndpointInstance : public CIMInstance {
public:
    TCPProtocolEndpointInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                Uint32 endpointId);
};

} // namespace Pegasus
