// Walks along associations from a class, answered by the schema. The source class and the roles
// have been checked.
#pragma once

#include "server/dispatch/Request.h"
#include "server/operation/Operation.h"

namespace smisd {

// The classes at the other ends; CIM_ERR_INVALID_CLASS for an unknown association or result class.
void associatedClasses(const Associators& operation, const Request& request);
void associatedClassNames(const AssociatorNames& operation, const Request& request);

// The associations; CIM_ERR_INVALID_PARAMETER for an unknown result class.
void referencingClasses(const References& operation, const Request& request);
void referencingClassNames(const ReferenceNames& operation, const Request& request);

} // namespace smisd
