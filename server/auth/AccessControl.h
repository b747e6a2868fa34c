// What each role may do and see, and the gate that every request of a client passes.
#pragma once

#include <atomic>
#include <cstdint>

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

// What becomes of a change that cannot be written to the audit log.
enum class AuditFailures {
    refuse, // with CIM_ERR_FAILED; nothing is changed
    warn,   // it is carried out, and the log says so
};

// The gate before the dispatcher; providers' own calls do not pass it. Refuses, with
// CIM_ERR_ACCESS_DENIED, what the user's role may not do or see, and writes each change, before it
// begins and when it has ended, and each refusal to the audit log. An answer that would show what
// the role may not see ends with that error, wherever in it that comes.
class GuardedDispatcher : public Dispatcher {
public:
    // All outlive it.
    GuardedDispatcher(Dispatcher& dispatcher, const Repository& repository, AuditLog& audit,
                      AuditFailures auditFailures = AuditFailures::refuse)
        : _dispatcher(dispatcher), _rules(repository), _audit(audit),
          _auditFailures(auditFailures) {}

    void dispatch(const Operation& operation, const RequestContext& context,
                  ResultSink& sink) override;

private:
    void change(const Operation& operation, const RequestContext& context, ResultSink& sink);

    Dispatcher& _dispatcher;
    const AccessRules _rules;
    AuditLog& _audit;
    const AuditFailures _auditFailures;
    std::atomic<std::uint64_t> _changes{0}; // begun
};

} // namespace smisd
