// From one HTTP request to its response.
#pragma once

#include <optional>
#include <string>

#include "server/auth/Authenticator.h"
#include "server/http/CimRequest.h"
#include "server/http/HttpMessage.h"
#include "server/http/HttpServer.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

// Checks who asks and what, has the operation carried out, and sends the answer. Thread-safe.
class RequestHandler {
public:
    // Without an authenticator every request is accepted, with the user name "". Both outlive the
    // handler. `hostName` is the realm that clients are asked to authenticate for. Of an answer,
    // limits.queueBytes are kept to tell its length, unless the client takes trailers.
    RequestHandler(Dispatcher& dispatcher, Authenticator* authenticator, std::string hostName,
                   const HttpLimits& limits);

    // As HttpAdmission. The job of an accepted request decodes its body, has the operation carried
    // out and sends the answer; it keeps its thread until that is done. The handler outlives it.
    void admit(HttpRequest head, Decide decide) const;

private:
    Admission judged(const HttpRequest& head, const Judgement& judgement) const;
    Admission accepted(const HttpRequest& head, const User& user) const;
    Admission refused(const HttpRequest& head, const BadRequest& badRequest,
                      const std::optional<std::string>& user = {}) const;

    Dispatcher& _dispatcher;
    Authenticator* const _authenticator;
    const std::string _hostName;
    const HttpLimits _limits;
};

} // namespace smisd
