// What monitoring asks for: /metrics and /healthz.
#pragma once

#include <functional>
#include <string>

#include "server/http/HttpMessage.h"
#include "server/http/HttpServer.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

// Pages that are given, without a password, to clients on this machine; to others they do not
// exist. Thread-safe as far as the functions that make them are.
class MonitorPages {
public:
    // `whyNotHealthy` returns "" when all is well.
    MonitorPages(std::function<std::string()> metrics, std::function<std::string()> whyNotHealthy)
        : _metrics(std::move(metrics)), _whyNotHealthy(std::move(whyNotHealthy)) {}

    // Whether the request is for one of them.
    static bool serves(const HttpRequest& request);

    // Accepts such a request; its job answers it. This outlives the job.
    Admission admit(const HttpRequest& request) const;

    // Answers such a request; returns whether the connection stays open.
    bool handle(const HttpRequest& request, ResponseChannel& channel) const;

private:
    const std::function<std::string()> _metrics;
    const std::function<std::string()> _whyNotHealthy;
};

// Whether the server can do its work: reads the first initiator of the array, if it has any, by way
// of the module. "" when that works, else why it does not.
std::string whyNotHealthy(Dispatcher& dispatcher);

} // namespace smisd
