#include "server/monitor/Metrics.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <fmt/format.h>

#include "server/operation/Operation.h"

using namespace Pegasus;

namespace smisd {
namespace {

std::string heading(const char* name, const char* type, const char* help) {
    return fmt::format("# HELP {0} {2}\n# TYPE {0} {1}\n", name, type, help);
}

template<class Number>
std::string single(const char* name, const char* type, const char* help, Number value) {
    return heading(name, type, help) + fmt::format("{} {}\n", name, value);
}

// DSP0200 defines codes up to 28; a provider may throw others.
constexpr int lastCode = 28;

std::string statusOf(const CIMException& error) {
    return error.getCode() > lastCode ? "other" : cimStatusCodeToString(error.getCode());
}

} // namespace

void Metrics::operationEnded(const std::string& operation, const std::string& status,
                             std::chrono::duration<double> time) {
    const std::lock_guard lock(_mutex);
    ++_operations[{operation, status}];
    Durations& durations = _durations[operation];
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        if (time.count() <= bounds[i]) {
            ++durations.counts[i];
        }
    }
    ++durations.count;
    durations.sum += time.count();
}

void Metrics::loginFailed() {
    const std::lock_guard lock(_mutex);
    ++_failedLogins;
}

std::string Metrics::text(const Gauges& gauges) const {
    const std::lock_guard lock(_mutex);
    std::string out = heading("smisd_operations_total", "counter", "CIM operations of clients.");
    for (const auto& [labels, count] : _operations) {
        out += fmt::format("smisd_operations_total{{operation=\"{}\",status=\"{}\"}} {}\n",
                           labels.first, labels.second, count);
    }
    out += heading("smisd_operation_duration_seconds", "histogram",
                   "From the decoded request to the end of its results.");
    for (const auto& [operation, durations] : _durations) {
        const auto line = [&, &name = operation](const std::string& bound, std::uint64_t count) {
            out += fmt::format("smisd_operation_duration_seconds_bucket"
                               "{{operation=\"{}\",le=\"{}\"}} {}\n",
                               name, bound, count);
        };
        for (std::size_t i = 0; i < bounds.size(); ++i) {
            line(fmt::format("{}", bounds[i]), durations.counts[i]);
        }
        line("+Inf", durations.count);
        out += fmt::format("smisd_operation_duration_seconds_sum{{operation=\"{}\"}} {}\n"
                           "smisd_operation_duration_seconds_count{{operation=\"{}\"}} {}\n",
                           operation, durations.sum, operation, durations.count);
    }
    out +=
        single("smisd_failed_logins_total", "counter", "Logins that were refused.", _failedLogins);
    out += single("smisd_connections", "gauge", "Connections that are open.", gauges.connections);
    out += single("smisd_workers", "gauge", "Operations that may be carried out at once.",
                  gauges.workers);
    out += single("smisd_workers_busy", "gauge", "Operations that are carried out now.",
                  gauges.busyWorkers);
    out += single("smisd_open_enumerations", "gauge", "Enumerations that are open for pulling.",
                  gauges.openEnumerations);
    out += single("smisd_waiting_logins", "gauge", "Logins whose passwords wait to be looked at.",
                  gauges.waitingLogins);
    out += single("smisd_refused_connections_total", "counter",
                  "Connections that were refused because too many were open.",
                  gauges.refusedConnections);
    out +=
        single("smisd_memory_bytes", "gauge", "What requests may hold (--memory).", gauges.memory);
    out += single("smisd_memory_used_bytes", "gauge", "What of it requests hold now.",
                  gauges.usedMemory);
    out += single("smisd_memory_refusals_total", "counter",
                  "How often there was no memory for a request or more of an answer.",
                  gauges.memoryRefusals);
    out += single("smisd_dropped_lines_total", "counter",
                  "Lines of standard output that nobody read in time.", gauges.droppedLines);
    out += single("smisd_audit_failures_total", "counter",
                  "Lines of the audit that could not be written.", gauges.lostAuditLines);
    return out;
}

void MeasuredDispatcher::dispatch(const Operation& operation, const RequestContext& context,
                                  ResultSink& sink) {
    const auto start = std::chrono::steady_clock::now();
    const auto count = [&](const std::string& status) {
        _metrics.operationEnded(nameOf(operation), status,
                                std::chrono::steady_clock::now() - start);
    };
    try {
        _dispatcher.dispatch(operation, context, sink);
    } catch (const CIMException& error) {
        count(error.getCode() == CIM_ERR_SUCCESS ? "success" : statusOf(error));
        throw;
    } catch (...) {
        count("failure");
        throw;
    }
    count("success");
}

} // namespace smisd
