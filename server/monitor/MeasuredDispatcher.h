// A dispatcher whose operations are counted and timed.
#pragma once

#include "server/monitor/Metrics.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

class MeasuredDispatcher : public Dispatcher {
public:
    // Both outlive it.
    MeasuredDispatcher(Dispatcher& dispatcher, Metrics& metrics)
        : _dispatcher(dispatcher), _metrics(metrics) {}

    // Counted under "success", the name of a CIM status code, or "failure" for what is no
    // CIMException, such as a lost connection.
    void dispatch(const Operation& operation, const RequestContext& context,
                  ResultSink& sink) override;

private:
    Dispatcher& _dispatcher;
    Metrics& _metrics;
};

} // namespace smisd
