// How each operation is carried out. All hand their results to the request's sink and throw
// CIMException, as Dispatcher::dispatch says.
#pragma once

#include "server/dispatch/Request.h"
#include "server/operation/Operation.h"

namespace smisd {

void carryOut(const GetInstance& operation, const Request& request);
void carryOut(const ModifyInstance& operation, const Request& request);
void carryOut(const CreateInstance& operation, const Request& request);
void carryOut(const DeleteInstance& operation, const Request& request);

void carryOut(const EnumerateInstances& operation, const Request& request);
void carryOut(const EnumerateInstanceNames& operation, const Request& request);

void carryOut(const GetProperty& operation, const Request& request);
void carryOut(const SetProperty& operation, const Request& request);

void carryOut(const Associators& operation, const Request& request);
void carryOut(const AssociatorNames& operation, const Request& request);
void carryOut(const References& operation, const Request& request);
void carryOut(const ReferenceNames& operation, const Request& request);

void carryOut(const OpenEnumeration& operation, const Request& request);
void carryOut(const PullEnumeration& operation, const Request& request);
void carryOut(const CloseEnumeration& operation, const Request& request);
void carryOut(const CountEnumeration& operation, const Request& request);

void carryOut(const InvokeMethod& operation, const Request& request);

void carryOut(const GetClass& operation, const Request& request);
void carryOut(const EnumerateClasses& operation, const Request& request);
void carryOut(const EnumerateClassNames& operation, const Request& request);
void carryOut(const GetQualifier& operation, const Request& request);
void carryOut(const EnumerateQualifiers& operation, const Request& request);

// Walks along associations from a class, which the schema answers. The source class and the roles
// have been checked.

// The classes at the other ends; CIM_ERR_INVALID_CLASS for an unknown association or result class.
void associatedClasses(const Associators& operation, const Request& request);
void associatedClassNames(const AssociatorNames& operation, const Request& request);

// The associations; CIM_ERR_INVALID_PARAMETER for an unknown result class.
void referencingClasses(const References& operation, const Request& request);
void referencingClassNames(const ReferenceNames& operation, const Request& request);

} // namespace smisd
