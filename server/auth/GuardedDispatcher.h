// The gate before the dispatcher: all requests of clients pass it, providers' own calls do not.
#pragma once

#include "server/auth/AccessRules.h"
#include "server/auth/AuditLog.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

// Refuses, with CIM_ERR_ACCESS_DENIED, what the user's role may not do or see, and writes each
// change and each refusal to the audit log. An answer that would show what the role may not see
// ends with that error, wherever in it that comes.
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
