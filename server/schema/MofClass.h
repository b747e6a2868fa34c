// The class and instance declarations of a MOF file.
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>

#include "server/schema/MofTree.h"
#include "server/schema/Schema.h"

namespace smisd::mof {

// The class as the file declares it, without what it inherits. Throws MofError, also if it does not
// fit the schema.
Pegasus::CIMClass compileClass(const Node& declaration, const Schema& schema);

// The instance with the properties that the file gives, in its order, each with the type that the
// class declares. Its path has the class alone. Throws MofError.
Pegasus::CIMInstance compileInstance(const Node& declaration, const Schema& schema);

} // namespace smisd::mof
