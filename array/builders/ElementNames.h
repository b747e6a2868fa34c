#ifndef ARRAY_BUILDERS_ELEMENT_NAMES_H
#define ARRAY_BUILDERS_ELEMENT_NAMES_H

#include <Pegasus/Common/String.h>

#include "array/Snapshot.h"

// What objects are called for people, as "ElementName". Empty for an id that names nothing.

namespace array {

// The iSCSI name of a target: also of its settings and statistics.
Pegasus::String targetName(const Snapshot& snapshot, Id target);

// The iSCSI name of a session's initiator.
Pegasus::String initiatorName(const Snapshot& snapshot, Id session);

// An endpoint's address and port, as in a TargetAddress (RFC 7143 section 13.8): an IPv6 address
// stands in brackets.
Pegasus::String portalName(const Snapshot& snapshot, Id endpoint);

} // namespace array

#endif
