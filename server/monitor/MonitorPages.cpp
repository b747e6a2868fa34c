#include "server/monitor/MonitorPages.h"

#include <exception>

#include <Pegasus/Common/Exception.h>
#include <boost/asio/ip/address.hpp>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "server/operation/Utf8.h"
#include "server/schema/MofReader.h"

using namespace Pegasus;

namespace smisd {
namespace {

constexpr const char* metricsPage = "/metrics";
constexpr const char* healthPage = "/healthz";

bool isLocal(const std::string& peer) {
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(peer, error);
    return !error && address.is_loopback();
}

std::string page(const char* status, const std::string& type, const std::string& body) {
    return fmt::format("HTTP/1.1 {}\r\nContent-Type: {}\r\nContent-Length: {}\r\n"
                       "Connection: close\r\n\r\n{}",
                       status, type, body.size(), body);
}

// One result is enough.
class FirstResult : public ResultSink {
public:
    struct Seen {};
    void instanceName(const CIMObjectPath&) override { throw Seen(); }
};

} // namespace

// Without a body, for which anybody on this machine could have the memory taken.
bool MonitorPages::serves(const HttpRequest& request) {
    return request.method == "GET" && request.header("Content-Length").value_or("0") == "0" &&
           !request.header("Transfer-Encoding") &&
           (request.target == metricsPage || request.target == healthPage) && isLocal(request.peer);
}

Admission MonitorPages::admit(const HttpRequest& request) const {
    return {[this, request](const std::string&, ResponseChannel& channel) {
        return handle(request, channel);
    }};
}

bool MonitorPages::handle(const HttpRequest& request, ResponseChannel& channel) const {
    if (request.target == metricsPage) {
        channel.send(page("200 OK", "text/plain; version=0.0.4; charset=utf-8", _metrics()));
        return false;
    }
    const std::string problem = _whyNotHealthy();
    if (problem.empty()) {
        channel.send(page("200 OK", "text/plain; charset=utf-8", "ok\n"));
    } else {
        spdlog::error("not healthy: {}", problem);
        channel.send(page("503 Service Unavailable", "text/plain; charset=utf-8", problem + "\n"));
    }
    return false;
}

std::string whyNotHealthy(Dispatcher& dispatcher) {
    FirstResult sink;
    try {
        dispatcher.dispatch(EnumerateInstanceNames{CIMNamespaceName(elementNamespace),
                                                   CIMName("CIM_StorageHardwareID")},
                            RequestContext{}, sink);
    } catch (const FirstResult::Seen&) {
        return "";
    } catch (const Exception& error) {
        return toUtf8(error.getMessage());
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

} // namespace smisd
