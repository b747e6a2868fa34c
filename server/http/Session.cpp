#include "server/http/Session.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <spdlog/spdlog.h>

#include "server/auth/Wiping.h"
#include "server/http/HandlerMemory.h"
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
constexpr std::chrono::seconds lingerTime{2};
constexpr std::chrono::seconds tryAgainAfter{2}; // where there was no memory
constexpr std::string_view continueHead = "HTTP/1.1 100 Continue\r\n\r\n";

// What a stranger may cost, beside the head of a request.
constexpr std::size_t strangersSlice = 4 * 1024; // read at a time
constexpr std::size_t shortBody = 16 * 1024;     // of a request that is refused
constexpr unsigned mostRefusals = 10;            // one after the other; then the connection ends
constexpr std::chrono::seconds strangersSendTime{2};
constexpr std::chrono::milliseconds refusalPause{20}; // after the second refusal; then it grows
constexpr std::size_t mostDrained = 256 * 1024;       // after the last response

// Reads requests one after the other, has each judged by its head and carried out by a worker, and
// sends what comes back. Lives as long as an operation on its stream or a request on a worker needs
// it; it is created and destroyed on the I/O thread.
template<class Stream>
class StreamSession : public Session,
                      public ResponseChannel,
                      public std::enable_shared_from_this<StreamSession<Stream>> {
public:
    StreamSession(OpenSessions& sessions, Stream stream, Origin origin)
        : Session(std::move(origin)), _sessions(sessions), _stream(std::move(stream)),
          _queue(sessions.limits.queueBytes, [this] { outOfMemory(); }) {
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
        _sessions.leave(*this);
        _queue.lose();
        beast::get_lowest_layer(_stream).close();
    }

    // ResponseChannel, on a worker.
    void send(std::string bytes) override {
        _queue.reserve(bytes, workers());
        asio::post(_sessions.io, [self = self(), bytes = std::move(bytes)]() mutable {
            self->_queue.push(std::move(bytes));
            self->write();
        });
    }
    std::string spareText() override { return _queue.spareText(); }
    void aside(const std::function<void()>& work) override { workers().whileWaiting(work); }
    void holdIn(MemoryBudget::Reservation memory) override {
        _bodyMemory = {}; // whose turn is over
        _queue.holdIn(std::move(memory));
    }
    void outOfMemory() override {
        try {
            asio::post(_sessions.io, [self = self()] { self->_sessions.freeMemory(self->_user); });
        } catch (const std::bad_alloc&) { // others ask too
        }
    }

    bool holdsMemory() const override {
        return state() == State::sending ||
               (state() == State::receiving && _bodyMemory.bytes() > 0);
    }

private:
    using Self = std::shared_ptr<StreamSession>;

    Self self() { return this->shared_from_this(); }
    void expireAfter(std::chrono::seconds time) {
        beast::get_lowest_layer(_stream).expires_after(time);
    }

    // For the last step of another thread: also without memory, the I/O thread gets the session
    // back, where it is destroyed if nobody needs it any more.
    auto withItsMemory(auto handler) {
        return asio::bind_allocator(HandlerAllocator<std::byte>(_memory), std::move(handler));
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
            _stream.async_read_some(_input.prepare(_isUsers ? sliceBytes : strangersSlice),
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

    void checkHead() {
        if (const std::optional<BadRequest> badRequest = refusalOf(*_parser)) {
            refuse(badRequest);
            return;
        }
        enterState(State::working);
        _sessions.admission(received(), [self = self()](Admission admission) mutable {
            decide(std::move(self), std::move(admission));
        });
    }

    // On any thread, to which the session belongs until then.
    static void decide(Self self, Admission admission) {
        self->_admission = std::move(admission);
        StreamSession& session = *self;
        asio::dispatch(session._sessions.io,
                       session.withItsMemory([self = std::move(self)] { self->decided(); }));
    }

    // The body of a request that is refused is read if it is short, so that the connection can stay
    // open.
    void decided() {
        if (_queue.lost()) {
            return;
        }
        _user = _admission.user.value_or("");
        if (_admission.user && !std::exchange(_isUsers, true)) {
            _sessions.becomeUsers(*this);
        }
        if (!_admission.job && (expectsContinue() || _parser->chunked() ||
                                _parser->content_length().value_or(0) > shortBody)) {
            _admission.keepOpen = false;
            sendRefusal();
            return;
        }
        enterState(State::receiving);
        expireAfter(_sessions.limits.requestTime);
        if (expectsContinue()) {
            asio::async_write(_stream, asio::buffer(continueHead),
                              unlessBad(&StreamSession::readBody));
        } else {
            readBody();
        }
    }

    bool expectsContinue() const {
        return beast::iequals(_parser->get()[http::field::expect], "100-continue");
    }

    void readBody() {
        if (!_admission.job) {
            http::async_read(_stream, _input, *_parser, unlessBad(&StreamSession::sendRefusal));
            return;
        }
        _bodyMemory = MemoryBudget::Reservation(*_sessions.limits.memory, _user);
        _parser->eager(true);
        readMore();
    }

    // A slice at a time, as there is memory for it.
    void readMore() {
        if (_parser->is_done()) {
            haveCarriedOut();
        } else if (_bodyMemory.resize(_parser->get().body().size() + sliceBytes)) {
            http::async_read_some(_stream, _input, *_parser, unlessBad(&StreamSession::readMore));
        } else {
            outOfMemory();
            _bodyMemory = {};
            respond(unavailable("There is no memory for the body of the request now", tryAgainAfter,
                                false),
                    false);
        }
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
    HttpRequest received() const {
        const auto& message = _parser->get();
        HttpRequest request;
        request.method = std::string(message.method_string());
        request.target = std::string(message.target());
        request.version = message.version();
        request.keepAlive = message.keep_alive() && !_sessions.stopping();
        for (const auto& field : message) {
            request.add(field.name_string(), field.value());
        }
        request.peer = origin().address;
        return request;
    }

    // Having it carried out

    // What is accepted of a stranger does not keep users waiting.
    WorkerPool& workers() { return _isUsers ? _sessions.workers : _sessions.strangersWorker; }

    // The connection is the worker's until the I/O thread gets the result, which is false when the
    // job has thrown.
    void haveCarriedOut() {
        enterState(State::working);
        _refusals = 0;
        workers().post(
            [self = self(), job = std::exchange(_admission.job, {}),
             body = std::move(_parser->get().body()),
             work = asio::make_work_guard(_sessions.io)]() mutable {
                bool keepOpen = false;
                try {
                    keepOpen = job(std::move(body), *self);
                } catch (const ConnectionLost&) {
                } catch (const std::exception& error) {
                    self->tell(error.what());
                } catch (...) { // Pegasus' exceptions are no std::exception
                    self->tell("unknown error");
                }
                StreamSession& session = *self;
                asio::post(session._sessions.io,
                           session.withItsMemory(
                               [self = std::move(self), keepOpen] { self->handled(keepOpen); }));
            },
            _user);
    }

    void tell(const char* error) const {
        try {
            spdlog::error("{}: connection ended: {}", origin().address, error);
        } catch (...) { // there may be no memory for it
        }
    }

    void handled(bool keepOpen) {
        _admission = {};
        _bodyMemory = {};
        _answered = true;
        _keepOpen = keepOpen;
        write();
    }

    // A request that cannot be read; nothing when its connection is lost.
    void refuse(const std::optional<BadRequest>& badRequest) {
        if (badRequest && !_queue.lost()) {
            respond(refusal(*badRequest, false), false);
        }
    }

    void sendRefusal() {
        if (!_admission.refusal || _queue.lost()) {
            close();
            return;
        }
        _refusals = _admission.user ? 0 : _refusals + 1;
        const bool keepOpen =
            _admission.keepOpen && _refusals < mostRefusals && !_sessions.stopping();
        respond(_admission.refusal(keepOpen), keepOpen);
    }

    void respond(std::string response, bool keepOpen) {
        enterState(State::working);
        _queue.reserveAtOnce(response);
        _queue.push(std::move(response));
        handled(keepOpen);
    }

    // Sending the response

    // Sends what is there, a slice at a time, so that each has its own time limit.
    void write() {
        if (_writing || _queue.lost()) {
            return;
        }
        if (_queue.empty()) {
            if (std::exchange(_answered, false)) {
                _keepOpen ? goOn() : end();
            }
            return;
        }
        _writing = true;
        enterState(State::sending);
        const std::string_view slice = _queue.next(sliceBytes);
        expireAfter(_isUsers ? _sessions.limits.sendTime : strangersSendTime);
        asio::async_write(_stream, asio::buffer(slice),
                          [self = self()](error_code error, std::size_t count) {
                              if (error) {
                                  self->_queue.lose();
                              } else {
                                  self->_writing = false;
                                  self->enterState(State::working);
                                  self->_queue.sent(count);
                                  self->write();
                              }
                          });
    }

    // Who goes on after refusals is served more and more slowly.
    void goOn() {
        if (_refusals < 2) {
            awaitRequest();
            return;
        }
        enterState(State::idle);
        after(refusalPause * (_refusals - 1), [this] { awaitRequest(); });
    }

    // If it is still open then.
    template<class Step>
    void after(std::chrono::milliseconds time, Step step) {
        auto timer = std::make_shared<asio::steady_timer>(_sessions.io, time);
        timer->async_wait([self = self(), timer, step](error_code) {
            if (self->state() != State::closed) {
                step();
            }
        });
    }

    // Lets the client read what was sent, then closes.
    void end() {
        enterState(State::ending);
        expireAfter(lingerTime);
        endStream(_stream, [self = self()](error_code) { self->drain(); });
    }
    void drain() {
        _input.clear();
        if (!_isUsers && _drained > mostDrained) {
            after(lingerTime, [this] { close(); }); // who does not read is not read from
            return;
        }
        beast::get_lowest_layer(_stream).async_read_some(
            _input.prepare(sliceBytes), [self = self()](error_code error, std::size_t count) {
                self->_drained += count;
                error ? self->close() : self->drain();
            });
    }

    OpenSessions& _sessions;
    Stream _stream;
    beast::basic_flat_buffer<WipingAllocator<char>> _input;
    std::optional<RequestParser> _parser;
    Admission _admission; // of the request that was read last
    HandlerMemory _memory;
    MemoryBudget::Reservation _bodyMemory; // while the body is read, and until it is decoded
    SendQueue _queue;
    bool _isUsers = false;    // a request was accepted of somebody who proved who it is
    unsigned _refusals = 0;   // since a request was accepted
    std::size_t _drained = 0; // after the last response
    bool _answered = false;   // all of the response was sent, or is in the queue
    bool _keepOpen = false;   // after this response
    bool _writing = false;    // a write is under way
};

} // namespace

template<class Stream>
void startSession(OpenSessions& sessions, Stream stream, Origin origin) {
    std::make_shared<StreamSession<Stream>>(sessions, std::move(stream), std::move(origin))
        ->start();
}
template void startSession(OpenSessions&, PlainStream, Origin);
template void startSession(OpenSessions&, TlsStream, Origin);

} // namespace smisd
