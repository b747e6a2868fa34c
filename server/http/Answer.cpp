#include "server/http/Answer.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <Pegasus/Common/CIMStatusCode.h>
#include <spdlog/spdlog.h>

#include "server/cimxml/ResponseWriter.h"
#include "server/http/HttpResponse.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

using Error = std::optional<CIMException>;

// What each answer takes while it is made: a hundred results as text, and the stack of a thread.
constexpr std::size_t leastAnswerBytes = 256 * 1024;

const Operation& operationOf(const Exchange& exchange) {
    return std::get<Operation>(exchange.decoded.operation);
}

// Collects the pieces of a body, one at least. A body that stays within the limit is sent when it
// is complete, with its length. A longer one is begun when it passes the limit: in chunks, or, over
// HTTP/1.0, up to the end of the connection. From then on an error cannot be reported any more; the
// caller leaves the body without its end.
//
// One thread; all functions but the constructor throw ConnectionLost.
class HeldAnswer {
public:
    explicit HeldAnswer(const Exchange& exchange)
        : _request(exchange.request), _limit(exchange.heldBytes), _memory(exchange.memory),
          _channel(exchange.channel), _keepOpen(exchange.keepOpen) {}

    void add(std::string_view piece);
    void finish();

    // Whether a part of it was sent.
    bool begun() const { return _begun; }
    // The end of the connection is no end of the body.
    bool keepOpen() const { return _keepOpen; }

private:
    void begin();
    std::string framed(std::string_view piece) const;

    const CimRequest& _request;
    const std::size_t _limit;
    MemoryBudget::Reservation& _memory;
    const std::size_t _heldBefore = _memory.bytes();
    ResponseChannel& _channel;
    bool _keepOpen;
    bool _begun = false;
    std::vector<std::string> _held; // until it is begun; never one text, which would be copied
    std::size_t _heldBytes = 0;
};

void HeldAnswer::add(std::string_view piece) {
    if (_begun) {
        _channel.send(framed(piece));
        return;
    }
    _held.push_back(_channel.spareText().append(piece));
    _heldBytes += piece.size();
    if (_heldBytes > _limit || !_memory.resize(_heldBefore + _heldBytes)) {
        begin();
    }
}

void HeldAnswer::finish() {
    if (!_begun) {
        _memory.resize(_heldBefore); // the channel holds what it sends
        _held.front().insert(0, answerHead(_request, _heldBytes, _keepOpen));
        for (std::string& piece : _held) {
            _channel.send(std::move(piece));
        }
    } else if (!_request.http10) {
        _channel.send(lastChunk());
    }
}

void HeldAnswer::begin() {
    _begun = true;
    _memory.resize(_heldBefore);
    _keepOpen = _keepOpen && !_request.http10;
    _channel.send(_request.http10 ? endlessAnswerHead(_request)
                                  : chunkedAnswerHead(_request, _keepOpen));
    for (std::string& piece : _held) {
        _channel.send(framed(std::exchange(piece, {})));
    }
}

std::string HeldAnswer::framed(std::string_view piece) const {
    return _request.http10 ? _channel.spareText().append(piece)
                           : chunk(piece, _channel.spareText());
}

// A change waits for the disk, and for the changes of other processes, which may take long.
void dispatch(const Exchange& exchange, ResultSink& sink) {
    RequestContext context = exchange.context;
    context.operationBytes = exchange.memory.bytes();
    const auto work = [&] { exchange.dispatcher.dispatch(operationOf(exchange), context, sink); };
    if (kindOf(operationOf(exchange)) != OperationKind::change) {
        return work();
    }
    std::exception_ptr failure;
    exchange.channel.aside([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    });
    if (failure) {
        std::rethrow_exception(failure);
    }
}

// Carries the operation out; the error that ended it, if one did. Code 0 is no error.
Error carriedOut(const Exchange& exchange, ResultSink& sink) {
    try {
        dispatch(exchange, sink);
    } catch (const CIMException& error) {
        return error.getCode() == CIM_ERR_SUCCESS ? Error() : Error(error);
    } catch (const ConnectionLost&) {
        throw;
    } catch (const Exception& error) {
        return CIMException(CIM_ERR_FAILED, error.getMessage());
    } catch (const std::exception& error) {
        spdlog::error("{}: {}", exchange.decoded.head.methodName, error.what());
        return CIMException(CIM_ERR_FAILED, "Internal error");
    }
    return std::nullopt;
}

// Pulled results are few, and an error replaces them.
ResponseWriter writerOf(const Exchange& exchange, ResponseWriter::Flush flush) {
    const bool isWhole = std::holds_alternative<OpenEnumeration>(operationOf(exchange)) ||
                         std::holds_alternative<PullEnumeration>(operationOf(exchange));
    return ResponseWriter(exchange.decoded.head, operationOf(exchange),
                          isWhole ? ResponseWriter::Flush() : std::move(flush), &exchange.memory);
}

bool sendWhole(const Exchange& exchange, const std::string& body) {
    exchange.channel.send(
        exchange.request.trailers
            ? chunkedAnswerHead(exchange.request, exchange.keepOpen) + chunk(body) + lastChunk()
            : answerHead(exchange.request, body.size(), exchange.keepOpen) + body);
    return exchange.keepOpen;
}

// An answer with its length, or one that is too long for that. An error that comes after a part was
// sent ends the connection: the client sees that the end is missing.
bool answerPlain(const Exchange& exchange) {
    HeldAnswer held(exchange);
    ResponseWriter writer = writerOf(exchange, [&](std::string_view piece) { held.add(piece); });
    const Error error = carriedOut(exchange, writer);
    if (!error) {
        held.add(writer.finish());
        held.finish();
        return held.keepOpen();
    }
    if (!held.begun()) {
        return sendWhole(exchange, errorBody(exchange.decoded.head, *error));
    }
    spdlog::warn("{}: connection ended in the middle of an answer by CIM error {}",
                 exchange.decoded.head.methodName, static_cast<int>(error->getCode()));
    return false;
}

// An answer in chunks, sent as the results come; an error goes into the trailer. One that comes
// after the first chunk has its bare text there, as OpenPegasus does it.
bool answerInChunks(const Exchange& exchange) {
    std::string head = chunkedAnswerHead(exchange.request, exchange.keepOpen);
    const auto send = [&](std::string_view piece) {
        exchange.channel.send(std::exchange(head, {}) + chunk(piece, exchange.channel.spareText()));
    };
    ResponseWriter writer = writerOf(exchange, send);
    const Error error = carriedOut(exchange, writer);
    if (!error) {
        send(writer.finish());
        exchange.channel.send(lastChunk());
        return exchange.keepOpen;
    }
    const std::string description =
        writer.flushed() ? toUtf8(error->getMessage()) : errorDescription(*error);
    send(writer.finishAfterError());
    exchange.channel.send(lastChunk(error->getCode(), description));
    return exchange.keepOpen;
}

} // namespace

bool answer(const Exchange& exchange) {
    if (const auto* error = std::get_if<CIMException>(&exchange.decoded.operation)) {
        return sendWhole(exchange, errorBody(exchange.decoded.head, *error));
    }
    if (!exchange.memory.grow(leastAnswerBytes)) {
        throw BadRequest(503, "", "There is no memory for an answer now");
    }
    return exchange.request.trailers ? answerInChunks(exchange) : answerPlain(exchange);
}

} // namespace smisd
