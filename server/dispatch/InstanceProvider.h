// The instance provider of a class.
#pragma once

#include "server/dispatch/Request.h"

#include <Pegasus/Provider/CIMInstanceProvider.h>

namespace smisd {

// Throws CIM_ERR_NOT_SUPPORTED without a text if there is none.
inline Pegasus::CIMInstanceProvider&
requireInstanceProvider(const Request& request, const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMName& className) {
    const Pegasus::String* name = instanceProviderName(request, nameSpace, className);
    if (!name)
        throw Pegasus::CIMException(Pegasus::CIM_ERR_NOT_SUPPORTED, Pegasus::String());
    return requireInterface<Pegasus::CIMInstanceProvider>(request, *name);
}

} // namespace smisd
