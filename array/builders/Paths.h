#ifndef ARRAY_BUILDERS_PATHS_H
#define ARRAY_BUILDERS_PATHS_H

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/String.h>

#include "array/Records.h"
#include "array/engine/Text.h"

// The paths that the builders write: the array's host, the namespace "root/snia", a class and its
// keys.

namespace array {

using Pegasus::CIMName;
using Pegasus::CIMObjectPath;

// The key text of an engine object, as "InstanceID".
CIMObjectPath pathWithInstanceID(const CIMName& className, Id id);

// The four keys of an element of the array as a system; the last is its own name in that system.
CIMObjectPath pathInSystem(const CIMName& className, const CIMName& lastKey,
                           const Pegasus::String& lastValue);

// The two references of an association.
CIMObjectPath pathOfAssociation(const CIMName& className, const CIMName& first,
                                const CIMObjectPath& firstEnd, const CIMName& second,
                                const CIMObjectPath& secondEnd);

} // namespace array

#endif
