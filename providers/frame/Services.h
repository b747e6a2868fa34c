#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>

namespace Pegasus {

// The array has one service of each service class, named like the array itself.

CIMObjectPath servicePath(const CIMName& className);

// The four keys as properties, and the path.
CIMInstance serviceInstance(const CIMName& className);

} // namespace Pegasus
