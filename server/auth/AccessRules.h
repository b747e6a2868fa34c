// What each role may do.
#pragma once

#include "server/operation/OperationSummary.h"
#include "server/operation/Role.h"
#include "server/schema/Repository.h"

namespace smisd {

// An administrator may do all. A reader may read, but no CIM_SharedSecret and no subclass of it.
//
// Immutable, so free for any thread. The repository must outlive it.
class AccessRules {
public:
    explicit AccessRules(const Repository& repository) : _repository(repository) {}

    // Judges the kind of the operation and the class that it addresses, not what comes out of it.
    bool mayCarryOut(Role role, const Operation& operation) const;

    // Whether an instance of the class may be shown, or its path.
    bool mayRead(Role role, const Pegasus::CIMNamespaceName& nameSpace,
                 const Pegasus::CIMName& className) const;

private:
    const Repository& _repository;
};

} // namespace smisd
