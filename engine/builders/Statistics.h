#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "engine/Export.h"

namespace Pegasus {

// Statistics. Login statistics and session failures are a target's, by its id; session statistics
// are a session's.
class DRAV_EXPORT iSCSILoginStatisticsInstance : public CIMInstance {
public:
    iSCSILoginStatisticsInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                 Uint32 targetId);
};

class DRAV_EXPORT iSCSISessionFailuresInstance : public CIMInstance {
public:
    iSCSISessionFailuresInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                 Uint32 targetId);
};

class DRAV_EXPORT iSCSISessionStatisticsInstance : public CIMInstance {
public:
    iSCSISessionStatisticsInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                   Uint32 sessionId);
};

// The counters of the network interface behind a TCP endpoint, by the endpoint's id.
class DRAV_EXPORT MACStatisticsInstance : public CIMInstance {
public:
    MACStatisticsInstance(Boolean includeQualifiers, Uint32 endpointId);
};

} // namespace Pegasus
