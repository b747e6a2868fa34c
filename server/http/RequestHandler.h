// From one HTTP request to its response.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "server/auth/Authenticator.h"
#include "server/http/CimRequest.h"
#include "server/http/HttpMessage.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

// Checks who asks and what, has the operation carried out, and sends the answer.
//
// Thread-safe; each call keeps its thread until the operation has ended.
class RequestHandler {
public:
    // Without an authenticator every request is accepted, with the user name "". Both outlive the
    // handler. `hostName` is the realm that clients are asked to authenticate for. Of an answer,
    // limits.queueBytes are kept to tell its length, unless the client takes trailers.
    RequestHandler(Dispatcher& dispatcher, Authenticator* authenticator, std::string hostName,
                   const HttpLimits& limits);

    // Whether a request with this head would be carried out; if not, it was refused. Throws
    // ConnectionLost.
    bool admit(const HttpRequest& head, ResponseChannel& channel);

    // Returns whether the connection stays open. Throws ConnectionLost.
    bool handle(HttpRequest request, ResponseChannel& channel);

private:
    struct Accepted {
        CimRequest cim;
        RequestContext context;
    };

    std::optional<Accepted> accept(const HttpRequest& request, ResponseChannel& channel);
    std::optional<User> authenticated(const HttpRequest& request, ResponseChannel& channel);
    // Returns what `serve` does, or, when it throws BadRequest, sends the refusal and returns
    // whether the connection stays open.
    bool orRefuse(const HttpRequest& request, ResponseChannel& channel,
                  const std::function<bool()>& serve);

    Dispatcher& _dispatcher;
    Authenticator* const _authenticator;
    const std::string _hostName;
    const HttpLimits _limits;
};

} // namespace smisd
