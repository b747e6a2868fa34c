// Instances in a request (DSP0201, "Object Definition Elements").
//
// All functions throw ElementError, or what the Pegasus value types throw for a part that they
// refuse.
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include "server/cimxml/XmlDocument.h"

namespace smisd {

// INSTANCE: its path is its class alone. Properties are as sent, known to the class or not.
Pegasus::CIMInstance readInstance(Element element);

// VALUE.NAMEDINSTANCE: the path has the keys.
Pegasus::CIMInstance readNamedInstance(Element element);

} // namespace smisd
