#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Provider/ProviderException.h>

namespace Pegasus {

// What every provider is. A module's PegasusCreateProvider returns it by this base; the interfaces
// below derive from it virtually, so go from here to one of them by dynamic_cast.
//
// Threads: initialize() comes before every other call and terminate() after; what lies between
// comes from any number of threads at once.
class PEGASUS_PROVIDER_LINKAGE CIMProvider {
public:
    CIMProvider();
    virtual ~CIMProvider();
    virtual void initialize(CIMOMHandle& cimom) = 0;
    virtual void terminate() = 0;
};

} // namespace Pegasus
