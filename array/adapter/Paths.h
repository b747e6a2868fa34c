#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/String.h>

#include "array/model/Records.h"
#include "array/model/Snapshot.h"
#include "array/model/Text.h"

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

// The names of objects for people, as in "ElementName". Empty for an id that names nothing.

// The iSCSI name of a target: also of its settings and statistics.
Pegasus::String targetName(const Snapshot& snapshot, Id target);

// The iSCSI name of a session's initiator.
Pegasus::String initiatorName(const Snapshot& snapshot, Id session);

// An endpoint's address and port, as in a TargetAddress (RFC 7143 section 13.8): an IPv6 address
// stands in brackets.
Pegasus::String portalName(const Snapshot& snapshot, Id endpoint);

} // namespace array
