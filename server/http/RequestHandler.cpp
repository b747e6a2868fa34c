#include "server/http/RequestHandler.h"

#include <chrono>
#include <optional>

#include <Pegasus/Common/CIMStatusCode.h>
#include <spdlog/spdlog.h>

#include "server/cimxml/RequestDecoder.h"
#include "server/cimxml/ResponseWriter.h"
#include "server/cimxml/ValueReader.h"
#include "server/http/Answer.h"
#include "server/http/ResponseHead.h"

using namespace Pegasus;

namespace smisd {
namespace {

using Error = std::optional<CIMException>;

// A decoded request on its way to its answer.
struct Exchange {
    Dispatcher& dispatcher;
    const CimRequest& request;
    const DecodedRequest& decoded;
    const RequestContext& context;
    ResponseChannel& channel;
    bool keepOpen;
    std::size_t answerBytes;

    const MessageHead& head() const { return decoded.head; }
    const Operation& operation() const { return std::get<Operation>(decoded.operation); }
    // In chunks that are followed by a trailer.
    bool chunked() const { return request.trailers; }
};

// Carries the operation out; the error that ended it, if one did. Code 0 is no error.
Error carriedOut(const Exchange& exchange, ResultSink& sink) {
    try {
        exchange.dispatcher.dispatch(exchange.operation(), exchange.context, sink);
    } catch (const CIMException& error) {
        return error.getCode() == CIM_ERR_SUCCESS ? Error() : Error(error);
    } catch (const ConnectionLost&) {
        throw;
    } catch (const Exception& error) {
        return CIMException(CIM_ERR_FAILED, error.getMessage());
    } catch (const std::exception& error) {
        spdlog::error("{}: {}", exchange.head().methodName, error.what());
        return CIMException(CIM_ERR_FAILED, "Internal error");
    }
    return std::nullopt;
}

// Pulled results are few, and an error replaces them.
ResponseWriter writerOf(const Exchange& exchange, ResponseWriter::Flush flush) {
    const bool isWhole = std::holds_alternative<OpenEnumeration>(exchange.operation()) ||
                         std::holds_alternative<PullEnumeration>(exchange.operation());
    return ResponseWriter(exchange.head(), exchange.operation(),
                          isWhole ? ResponseWriter::Flush() : std::move(flush));
}

bool sendWhole(const Exchange& exchange, const std::string& body) {
    exchange.channel.send(
        exchange.chunked()
            ? chunkedAnswerHead(exchange.request, exchange.keepOpen) + chunk(body) + lastChunk()
            : answerHead(exchange.request, body.size(), exchange.keepOpen) + body);
    return exchange.keepOpen;
}

// An answer of known length, or one that is too long for that. An error that comes when a part is
// gone ends the connection: the client sees that the end is missing.
bool answerPlain(const Exchange& exchange) {
    HeldAnswer held(exchange.request, exchange.keepOpen, exchange.answerBytes, exchange.channel);
    ResponseWriter writer = writerOf(exchange, [&](std::string_view piece) { held.add(piece); });
    const Error error = carriedOut(exchange, writer);
    if (!error) {
        held.add(writer.finish());
        held.finish();
        return held.keepOpen();
    }
    if (!held.begun()) {
        return sendWhole(exchange, errorBody(exchange.head(), *error));
    }
    spdlog::warn("{}: connection ended in the middle of an answer by CIM error {}",
                 exchange.head().methodName, static_cast<int>(error->getCode()));
    return false;
}

// An answer in chunks, sent as the results come; an error goes into the trailer. One that comes
// after the first chunk has its bare text there, as OpenPegasus does it.
bool answerInChunks(const Exchange& exchange) {
    std::string head = chunkedAnswerHead(exchange.request, exchange.keepOpen);
    const auto send = [&](std::string_view piece) {
        exchange.channel.send(std::exchange(head, {}) + chunk(piece, exchange.channel.piece()));
    };
    ResponseWriter writer = writerOf(exchange, send);
    const Error error = carriedOut(exchange, writer);
    if (!error) {
        send(writer.finish());
        exchange.channel.send(lastChunk());
        return exchange.keepOpen;
    }
    const std::string description =
        writer.flushed() ? std::string(error->getMessage().getCString()) : errorDescription(*error);
    send(writer.finishAfterError());
    exchange.channel.send(lastChunk(error->getCode(), description));
    return exchange.keepOpen;
}

// Returns whether the connection stays open.
bool answer(const Exchange& exchange) {
    if (const auto* error = std::get_if<CIMException>(&exchange.decoded.operation)) {
        return sendWhole(exchange, errorBody(exchange.head(), *error));
    }
    return exchange.chunked() ? answerInChunks(exchange) : answerPlain(exchange);
}

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
        context.userName = toString(user->name);
        context.role = user->role;
    }
    CimRequest cim = readCimRequest(request);
    context.acceptLanguage = toString(cim.acceptLanguage);
    context.contentLanguage = toString(cim.contentLanguage);
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
