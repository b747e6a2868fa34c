#include "server/monitor/MeasuredDispatcher.h"

#include "server/operation/OperationSummary.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace smisd {
namespace {

// DSP0200 defines codes up to 28; a provider may throw others.
constexpr int lastCode = 28;

std::string statusOf(const CIMException& error) {
    return error.getCode() > lastCode ? "other" : cimStatusCodeToString(error.getCode());
}

} // namespace

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
