// From one HTTP request to its response.
#pragma once

#include "server/auth/Authenticator.h"
#include "server/http/HttpMessage.h"
#include "server/operation/Dispatcher.h"

#include <optional>
#include <string>

namespace smisd {

// Checks who asks and what, has the operation carried out, and sends the answer.
//
// Thread-safe; each call keeps its thread until the operation has ended.
class RequestHandler {
public:
    // Without an authenticator every request is accepted, with the user name "". Both outlive the
    // handler. `hostName` is the realm that clients are asked to authenticate for.
    RequestHandler(Dispatcher& dispatcher, Authenticator* authenticator, std::string hostName);

    // Returns whether the connection stays open. Throws ConnectionLost.
    bool handle(HttpRequest request, ResponseChannel& channel);

private:
    std::optional<std::string> authenticated(const HttpRequest& request, ResponseChannel& channel);

    Dispatcher& _dispatcher;
    Authenticator* const _authenticator;
    const std::string _hostName;
};

} // namespace smisd
