// Counters of what the server does, in Prometheus' text form.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "server/operation/Dispatcher.h"

namespace smisd {

// What is read at the time of a scrape.
struct Gauges {
    unsigned connections = 0;
    unsigned workers = 0;
    unsigned busyWorkers = 0;
    unsigned openEnumerations = 0;
    std::uint64_t droppedLines = 0; // these are counters that stand elsewhere
    std::uint64_t lostAuditLines = 0;
    std::size_t waitingLogins = 0;
    std::uint64_t refusedConnections = 0; // a counter too
    std::size_t memory = 0;               // bytes of the budget
    std::size_t usedMemory = 0;
    std::size_t memoryRefusals = 0; // a counter too
};

// Thread-safe.
class Metrics {
public:
    // `operation` and `status` come from small fixed sets: each pair is kept for ever.
    void operationEnded(const std::string& operation, const std::string& status,
                        std::chrono::duration<double> time);
    void loginFailed();

    // Text exposition format, version 0.0.4.
    std::string text(const Gauges& gauges) const;

    // The upper bounds of the buckets of durations, in seconds.
    static constexpr std::array<double, 6> bounds{0.001, 0.01, 0.1, 1, 10, 100};

private:
    struct Durations {
        std::array<std::uint64_t, bounds.size()> counts{}; // each with those below it
        std::uint64_t count = 0;
        double sum = 0; // seconds
    };

    mutable std::mutex _mutex; // guards what follows
    std::map<std::pair<std::string, std::string>, std::uint64_t> _operations;
    std::map<std::string, Durations> _durations;
    std::uint64_t _failedLogins = 0;
};

// A dispatcher whose operations are counted and timed.
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
