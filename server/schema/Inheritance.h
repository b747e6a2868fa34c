// What a class inherits.
#pragma once

#include <Pegasus/Common/CIMClass.h>

namespace smisd {

// The class as declared, completed with the properties, methods and qualifiers of its superclass
// (null if it has none), which is complete itself. What is inherited stands first and is marked as
// propagated; class origins are set. The arguments stay as they are.
Pegasus::CIMClass withInherited(const Pegasus::CIMClass& declared,
                                const Pegasus::CIMClass* superclass);

} // namespace smisd
