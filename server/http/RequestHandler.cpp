#include "server/http/RequestHandler.h"

#include <chrono>
#include <optional>

#include <spdlog/spdlog.h>

#include "server/cimxml/RequestDecoder.h"
#include "server/http/Answer.h"
#include "server/http/HttpResponse.h"
#include "server/http/RefusedRequest.h"
#include "server/operation/Utf8.h"

namespace smisd {
namespace {

// A client that does not speak CIM-XML has nothing more to say.
bool endsConnection(const BadRequest& badRequest) {
    return badRequest.cimError().empty() && badRequest.status() != 400;
}

} // namespace

RequestHandler::RequestHandler(Dispatcher& dispatcher, Authenticator* authenticator,
                               std::string hostName, const HttpLimits& limits)
    : _dispatcher(dispatcher), _authenticator(authenticator), _hostName(std::move(hostName)),
      _limits(limits) {}

bool RequestHandler::admit(const HttpRequest& head, ResponseChannel& channel) {
    bool accepted = false;
    orRefuse(head, channel, [&] {
        accepted = accept(head, channel).has_value();
        return accepted;
    });
    return accepted;
}

bool RequestHandler::handle(HttpRequest request, ResponseChannel& channel) {
    return orRefuse(request, channel, [&] {
        const std::optional<Accepted> accepted = accept(request, channel);
        if (!accepted) {
            return request.keepAlive;
        }
        const DecodedRequest decoded =
            decodeRequest(std::move(request.body), accepted->cim.headers, _limits.depth);
        return answer({_dispatcher, accepted->cim, decoded, accepted->context, channel,
                       request.keepAlive, _limits.queueBytes});
    });
}

bool RequestHandler::orRefuse(const HttpRequest& request, ResponseChannel& channel,
                              const std::function<bool()>& serve) {
    try {
        return serve();
    } catch (const BadRequest& badRequest) {
        const bool keepOpen = request.keepAlive && !endsConnection(badRequest);
        // The detail may quote what the client sent, and that may be a secret.
        spdlog::debug("{}: refused: {} {}", request.peer, badRequest.status(),
                      badRequest.cimError());
        channel.send(refusal(badRequest, keepOpen));
        return keepOpen;
    }
}

// All that the head says; nothing after the request was refused.
std::optional<RequestHandler::Accepted> RequestHandler::accept(const HttpRequest& request,
                                                               ResponseChannel& channel) {
    checkHttpMethod(request);
    RequestContext context;
    context.address = request.peer;
    if (_authenticator != nullptr) {
        const std::optional<User> user = authenticated(request, channel);
        if (!user) {
            return std::nullopt;
        }
        context.userName = fromUtf8(user->name);
        context.role = user->role;
    }
    CimRequest cim = readCimRequest(request);
    context.acceptLanguage = fromUtf8(cim.acceptLanguage);
    context.contentLanguage = fromUtf8(cim.contentLanguage);
    return Accepted{std::move(cim), std::move(context)};
}

// The user, or nothing after the request was refused.
std::optional<User> RequestHandler::authenticated(const HttpRequest& request,
                                                  ResponseChannel& channel) {
    const std::string_view credentials = request.header("Authorization").value_or("");
    std::optional<User> user = _authenticator->userOf(
        {credentials, request.peer, [&](std::chrono::milliseconds time) { channel.wait(time); }});
    if (!user) {
        channel.send(unauthorized(_hostName, request.keepAlive));
    }
    return user;
}

} // namespace smisd
