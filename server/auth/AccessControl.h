// What each role may do and see, and the gate that every request of a client passes.
#pragma once

#include "server/auth/AuditLog.h"
#include "server/operation/Dispatcher.h"
#include "server/operation/Operation.h"
#include "server/schema/Schema.h"

namespace smisd {

// The rules: an administrator may do all. A reader may read, but no CIM_SharedSecret and no
// subclass of it.
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

// The gate before the dispatcher; providers' own calls do not pass it. Refuses, with
// CIM_ERR_ACCESS_DENIED, what the user's role may not do or see, and writes each change and each
// refusal to the audit log. An answer that would show what the role may not see ends with that
// error, wherever in it that comes.
class GuardedDispatcher : public Dispatcher {
public:
    // All outlive it.
    GuardedDispatcher(Dispatcher& dispatcher, const Repository& repository, AuditLog& audit)
        : _dispatcher(dispatcher), _rules(repository), _audit(audit) {}

    void dispatch(const Operation& operation, const RequestContext& context,
                  ResultSink& sink) override;

private:
    void change(const Operation& operation, const RequestContext& context, ResultSink& sink);

    Dispatcher& _dispatcher;
    const AccessRules _rules;
    AuditLog& _audit;
};

} // namespace smisd
