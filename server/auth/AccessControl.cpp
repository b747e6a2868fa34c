#include "server/auth/AccessControl.h"

#include <exception>
#include <utility>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <spdlog/spdlog.h>

#include "server/auth/WatchedSink.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

AuditRecord recordOf(const char* event, const Operation& operation, const RequestContext& context) {
    AuditRecord record;
    record.event = event;
    record.user = toUtf8(context.userName);
    record.address = context.address;
    record.operation = nameOf(operation);
    if (const auto* call = std::get_if<InvokeMethod>(&operation)) {
        record.method = toUtf8(call->methodName.getString());
    }
    record.object = toUtf8(objectOf(operation).toString());
    return record;
}

CIMException accessDenied(const RequestContext& context, const CIMName& className) {
    return CIMException(CIM_ERR_ACCESS_DENIED,
                        String("The role ") + String(std::string(nameOf(context.role)).c_str()) +
                            String(" does not permit this on ") + className.getString());
}

// Writes the record when it is destroyed; the outcome is set before.
class Entry {
public:
    Entry(AuditLog& audit, AuditRecord record) : _audit(audit), _record(std::move(record)) {}
    ~Entry() {
        try {
            _audit.write(_record);
        } catch (const std::exception& error) { // its change's first line stays without a second
            spdlog::error("the audit log lacks a line: {}", error.what());
        }
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    AuditRecord& operator*() { return _record; }
    AuditRecord* operator->() { return &_record; }

private:
    AuditLog& _audit;
    AuditRecord _record;
};

} // namespace

bool AccessRules::mayCarryOut(Role role, const Operation& operation) const {
    if (role == Role::administrator || kindOf(operation) == OperationKind::schema) {
        return true;
    }
    const CIMObjectPath object = objectOf(operation);
    return kindOf(operation) == OperationKind::read &&
           mayRead(role, object.getNameSpace(), object.getClassName());
}

bool AccessRules::mayRead(Role role, const CIMNamespaceName& nameSpace,
                          const CIMName& className) const {
    static const CIMName secret("CIM_SharedSecret");
    if (role == Role::administrator) {
        return true;
    }
    const Schema* schema = _repository.find(nameSpace);
    return !(className == secret || (schema != nullptr && schema->isA(className, secret)));
}

void GuardedDispatcher::dispatch(const Operation& operation, const RequestContext& context,
                                 ResultSink& sink) {
    const auto refuse = [&](const CIMName& className) {
        AuditRecord record = recordOf("refusal", operation, context);
        record.outcome = cimStatusCodeToString(CIM_ERR_ACCESS_DENIED);
        _audit.writeSummed(record);
        throw accessDenied(context, className);
    };
    if (!_rules.mayCarryOut(context.role, operation)) {
        refuse(objectOf(operation).getClassName());
    }
    if (kindOf(operation) == OperationKind::change) {
        change(operation, context, sink);
    } else if (context.role == Role::administrator) {
        _dispatcher.dispatch(operation, context, sink);
    } else {
        const CIMNamespaceName nameSpace = objectOf(operation).getNameSpace();
        WatchedSink watched(sink, [&](const CIMName& className) {
            if (!_rules.mayRead(context.role, nameSpace, className)) {
                refuse(className);
            }
        });
        _dispatcher.dispatch(operation, context, watched);
    }
}

// It is written down before it begins, and whatever ends it.
void GuardedDispatcher::change(const Operation& operation, const RequestContext& context,
                               ResultSink& sink) {
    AuditRecord record = recordOf("change", operation, context);
    record.change = ++_changes;
    record.outcome = "begun";
    if (!_audit.write(record) && _auditFailures == AuditFailures::refuse) {
        throw CIMException(CIM_ERR_FAILED,
                           String("Nothing was changed: the audit log cannot be written"));
    }
    Entry entry(_audit, std::move(record));
    entry->outcome = "interrupted";
    WatchedSink watched(sink, [](const CIMName&) {});
    try {
        _dispatcher.dispatch(operation, context, watched);
        entry->outcome = "success";
    } catch (const CIMException& error) {
        entry->outcome = cimStatusCodeToString(error.getCode());
        throw;
    }
    entry->returned = watched.returned();
}

} // namespace smisd
