#include "server/http/Session.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <spdlog/spdlog.h>

#include "server/auth/Wiping.h"
#include "server/http/HttpMessage.h"
#include "server/http/HttpResponse.h"
#include "server/http/OpenSessions.h"
#include "server/http/RefusedRequest.h"
#include "server/http/SendQueue.h"
#include "server/http/Tls.h"

namespace smisd {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::system::error_code;

constexpr std::size_t sliceBytes = 64 * 1024; // read or sent at a time
constexpr std::size_t shortBody = 64 * 1024;
constexpr std::chrono::seconds lingerTime{2};
constexpr std::string_view continueHead = "HTTP/1.1 100 Continue\r\n\r\n";

// Reads requests one after the other, has each handled on a worker, and sends what comes back.
// Lives as long as an operation on its stream or a request on a worker needs it; it is created and
// destroyed on the I/O thread.
template<class Stream>
class StreamSession : public Session,
                      public ResponseChannel,
                      public std::enable_shared_from_this<StreamSession<Stream>> {
public:
    StreamSession(OpenSessions& sessions, Stream stream, std::string peer)
        : _sessions(sessions), _stream(std::move(stream)), _peer(std::move(peer)),
          _queue(sessions.limits.queueBytes) {
        _sessions.enter(*this);
    }
    ~StreamSession() override { _sessions.leave(*this); }

    void start() {
        enterState(State::receiving);
        expireAfter(_sessions.limits.requestTime);
        openStream(_stream, [self = self()](error_code error) {
            if (!error) {
                self->awaitRequest();
            }
        });
    }

    void close() override {
        enterState(State::closed);
        _queue.lose();
        beast::get_lowest_layer(_stream).close();
    }

    // ResponseChannel, on a worker.
    void send(std::string bytes) override {
        _queue.reserve(bytes.size(), _sessions.workers);
        asio::post(_sessions.io, [self = self(), bytes = std::move(bytes)]() mutable {
            self->_queue.push(std::move(bytes));
            self->write();
        });
    }
    std::string spareText() override { return _queue.spareText(); }
    void wait(std::chrono::milliseconds time) override {
        _sessions.workers.whileWaiting([time] { std::this_thread::sleep_for(time); });
    }

private:
    std::shared_ptr<StreamSession> self() { return this->shared_from_this(); }
    void expireAfter(std::chrono::seconds time) {
        beast::get_lowest_layer(_stream).expires_after(time);
    }

    // Reading a request

    void awaitRequest() {
        enterState(State::idle);
        _queue.dropSpareTexts();
        skipEmptyLines();
        if (_sessions.stopping()) {
            end();
        } else if (_input.size() > 0) {
            readHead();
        } else {
            expireAfter(_sessions.limits.idleTime);
            _stream.async_read_some(_input.prepare(sliceBytes),
                                    [self = self()](error_code error, std::size_t count) {
                                        self->_input.commit(count);
                                        if (!error) {
                                            self->awaitRequest();
                                        }
                                    });
        }
    }

    // Before a request they mean nothing (RFC 9112, section 2.2).
    void skipEmptyLines() {
        const auto* bytes = static_cast<const char*>(_input.data().data());
        const std::string_view text(bytes, _input.size());
        const std::size_t count = text.find_first_not_of("\r\n");
        _input.consume(count == std::string_view::npos ? text.size() : count);
    }

    void readHead() {
        enterState(State::receiving);
        _parser.emplace();
        _parser->header_limit(static_cast<std::uint32_t>(_sessions.limits.headerBytes));
        _parser->body_limit(_sessions.limits.bodyBytes);
        expireAfter(_sessions.limits.requestTime);
        http::async_read_header(_stream, _input, *_parser, unlessBad(&StreamSession::checkHead));
    }

    // A long body is read only when the head has been accepted.
    void checkHead() {
        if (const std::optional<BadRequest> badRequest = refusalOf(*_parser)) {
            refuse(badRequest);
        } else if (expectsContinue() || _parser->chunked() ||
                   _parser->content_length().value_or(0) > shortBody) {
            onWorker([this, head = received(false)] { return _sessions.admission(head, *this); },
                     &StreamSession::admitted);
        } else {
            readBody();
        }
    }

    bool expectsContinue() const {
        return beast::iequals(_parser->get()[http::field::expect], "100-continue");
    }

    void admitted(bool accepted) {
        if (!accepted) {
            handled(false);
            return;
        }
        enterState(State::receiving);
        if (!expectsContinue()) {
            readBody();
            return;
        }
        asio::async_write(_stream, asio::buffer(continueHead), unlessBad(&StreamSession::readBody));
    }

    void readBody() {
        http::async_read(_stream, _input, *_parser, unlessBad(&StreamSession::handle));
    }

    // Goes on with `next` when a part of the request has been read, and refuses a bad request.
    auto unlessBad(void (StreamSession::*next)()) {
        return [self = self(), next](error_code error, std::size_t) {
            if (error) {
                self->refuse(refusalOf(error));
            } else {
                (*self.*next)();
            }
        };
    }

    // The request, without its body.
    HttpRequest received(bool keepAlive) const {
        const auto& message = _parser->get();
        HttpRequest request;
        request.method = std::string(message.method_string());
        request.target = std::string(message.target());
        request.version = message.version();
        request.keepAlive = keepAlive;
        for (const auto& field : message) {
            request.add(field.name_string(), field.value());
        }
        request.peer = _peer;
        return request;
    }

    // Having it handled

    void handle() {
        HttpRequest request = received(_parser->get().keep_alive() && !_sessions.stopping());
        request.body = std::move(_parser->get().body());
        onWorker(
            [this, request = std::move(request)]() mutable {
                return _sessions.handler(std::move(request), *this);
            },
            &StreamSession::handled);
    }

    // Has a worker call `serve`; the connection is the worker's until `then` gets the result, which
    // is false when `serve` has thrown.
    template<class Serve>
    void onWorker(Serve serve, void (StreamSession::*then)(bool)) {
        enterState(State::working);
        _sessions.workers.post([self = self(), serve = std::move(serve), then,
                                work = asio::make_work_guard(_sessions.io)]() mutable {
            bool result = false;
            try {
                result = serve();
            } catch (const ConnectionLost&) {
            } catch (const std::exception& error) {
                spdlog::error("{}: connection ended: {}", self->_peer, error.what());
            } catch (...) { // Pegasus' exceptions are no std::exception
                spdlog::error("{}: connection ended by an unknown error", self->_peer);
            }
            asio::io_context& io = self->_sessions.io;
            asio::post(io, [self = std::move(self), then, result] { (*self.*then)(result); });
        });
    }

    void handled(bool keepOpen) {
        _answered = true;
        _keepOpen = keepOpen;
        write();
    }

    // A request that cannot be read; nothing when its connection is lost.
    void refuse(const std::optional<BadRequest>& badRequest) {
        if (!badRequest || _queue.lost()) {
            return;
        }
        enterState(State::working);
        std::string response = refusal(*badRequest, false);
        _queue.reserve(response.size(), _sessions.workers);
        _queue.push(std::move(response));
        handled(false);
    }

    // Sending the response

    // Sends what is there, a slice at a time, so that each has its own time limit.
    void write() {
        if (_writing || _queue.lost()) {
            return;
        }
        if (_queue.empty()) {
            if (std::exchange(_answered, false)) {
                _keepOpen ? awaitRequest() : end();
            }
            return;
        }
        _writing = true;
        const std::string_view slice = _queue.next(sliceBytes);
        expireAfter(_sessions.limits.sendTime);
        asio::async_write(_stream, asio::buffer(slice),
                          [self = self()](error_code error, std::size_t count) {
                              if (error) {
                                  self->_queue.lose();
                              } else {
                                  self->_writing = false;
                                  self->_queue.sent(count);
                                  self->write();
                              }
                          });
    }

    // Lets the client read what was sent, then closes.
    void end() {
        expireAfter(lingerTime);
        endStream(_stream, [self = self()](error_code) { self->drain(); });
    }
    void drain() {
        _input.clear();
        beast::get_lowest_layer(_stream).async_read_some(
            _input.prepare(sliceBytes), [self = self()](error_code error, std::size_t) {
                error ? self->close() : self->drain();
            });
    }

    OpenSessions& _sessions;
    Stream _stream;
    const std::string _peer;
    beast::basic_flat_buffer<WipingAllocator<char>> _input;
    std::optional<RequestParser> _parser;
    SendQueue _queue;
    bool _answered = false; // all of the response was sent, or is in the queue
    bool _keepOpen = false; // after this response
    bool _writing = false;  // a write is under way
};

} // namespace

template<class Stream>
void startSession(OpenSessions& sessions, Stream stream, std::string peer) {
    std::make_shared<StreamSession<Stream>>(sessions, std::move(stream), std::move(peer))->start();
}
template void startSession(OpenSessions&, PlainStream, std::string);
template void startSession(OpenSessions&, TlsStream, std::string);

} // namespace smisd
