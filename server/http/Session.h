// One connection of HttpServer. Included by HttpServer.cpp alone.
#pragma once

#include <algorithm>
#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include <boost/beast/http.hpp>

#include "server/http/Answer.h"
#include "server/http/CimRequest.h"
#include "server/http/HttpMessage.h"
#include "server/http/ResponseHead.h"
#include "server/http/SessionHost.h"

namespace smisd {

namespace http = boost::beast::http;

// Reads requests one after the other, has each handled on a worker, and writes what comes back.
// Lives as long as an operation on its stream or a request on a worker needs it; it is created and
// destroyed on the I/O thread.
template<class Stream>
class Session : public SessionBase,
                public ResponseChannel,
                public std::enable_shared_from_this<Session<Stream>> {
public:
    Session(SessionHost& host, Stream stream, std::string peer)
        : _host(host), _stream(std::move(stream)), _peer(std::move(peer)),
          _backlog(host.limits.queueBytes) {
        _host.enter(*this);
    }
    ~Session() override { _host.leave(*this); }

    void start() {
        enterState(State::receiving);
        expireAfter(_host.limits.requestTime);
        openStream(_stream, [self = self()](error_code error) {
            if (!error) {
                self->awaitRequest();
            }
        });
    }

    void close() override {
        enterState(State::closed);
        _backlog.lose();
        beast::get_lowest_layer(_stream).close();
    }

    // ResponseChannel, on a worker.
    void send(std::string bytes) override {
        _backlog.add(bytes.size(), _host.workers);
        asio::post(_host.io, [self = self(), bytes = std::move(bytes)]() mutable {
            self->_output.push_back(std::move(bytes));
            self->write();
        });
    }
    std::string piece() override { return _spares.take(); }
    void wait(std::chrono::milliseconds time) override {
        _host.workers.whileWaiting([time] { std::this_thread::sleep_for(time); });
    }

private:
    static constexpr std::size_t sliceBytes = 64 * 1024;
    static constexpr std::size_t shortBody = 64 * 1024;
    static constexpr std::chrono::seconds lingerTime{2};
    using Parser = http::request_parser<http::string_body>;

    std::shared_ptr<Session> self() { return this->shared_from_this(); }
    void expireAfter(std::chrono::seconds time) {
        beast::get_lowest_layer(_stream).expires_after(time);
    }

    void awaitRequest() {
        enterState(State::idle);
        _spares.clear();
        skipEmptyLines();
        if (_host.stopping) {
            end();
        } else if (_input.size() > 0) {
            readHead();
        } else {
            expireAfter(_host.limits.idleTime);
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
        _parser->header_limit(static_cast<std::uint32_t>(_host.limits.headerBytes));
        _parser->body_limit(_host.limits.bodyBytes);
        expireAfter(_host.limits.requestTime);
        http::async_read_header(_stream, _input, *_parser,
                                [self = self()](error_code error, std::size_t) {
                                    if (error) {
                                        self->refuse(error);
                                    } else {
                                        self->checkHead();
                                    }
                                });
    }

    void checkHead() {
        if (const std::optional<BadRequest> badRequest = refusalOf(*_parser)) {
            refuse(*badRequest);
        } else if (expectsContinue() || _parser->chunked() ||
                   _parser->content_length().value_or(0) > shortBody) {
            onWorker([this, request = received(false)] { return _host.admission(request, *this); },
                     &Session::admitted);
        } else {
            readBody();
        }
    }

    bool expectsContinue() const {
        return beast::iequals(_parser->get()[http::field::expect], "100-continue");
    }

    // A long body is read once the head has been accepted.
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
        asio::async_write(_stream, asio::buffer(continueHead),
                          [self = self()](error_code error, std::size_t) {
                              if (!error) {
                                  self->readBody();
                              }
                          });
    }

    void readBody() {
        http::async_read(_stream, _input, *_parser, [self = self()](error_code error, std::size_t) {
            if (error) {
                self->refuse(error);
            } else {
                self->handle();
            }
        });
    }

    void handle() {
        HttpRequest request = received(_parser->get().keep_alive() && !_host.stopping);
        request.body = std::move(_parser->get().body());
        onWorker(
            [this, request = std::move(request)]() mutable {
                return _host.handler(std::move(request), *this);
            },
            &Session::handled);
    }

    // Has a worker call `serve`; the connection is the worker's until `then` gets the result, which
    // is false for a job that has thrown.
    template<class Serve>
    void onWorker(Serve serve, void (Session::*then)(bool)) {
        enterState(State::working);
        _host.workers.post([self = self(), serve = std::move(serve), then,
                            work = asio::make_work_guard(_host.io)]() mutable {
            bool result = false;
            try {
                result = serve();
            } catch (const ConnectionLost&) {
            } catch (const std::exception& error) {
                spdlog::error("{}: connection ended: {}", self->_peer, error.what());
            } catch (...) { // Pegasus' exceptions are no std::exception
                spdlog::error("{}: connection ended by an unknown error", self->_peer);
            }
            asio::io_context& io = self->_host.io;
            asio::post(io, [self = std::move(self), then, result] { (*self.*then)(result); });
        });
    }

    // Without the body.
    HttpRequest received(bool keepAlive) const {
        const auto& message = _parser->get();
        HttpRequest request;
        request.method = std::string(message.method_string());
        request.target = std::string(message.target());
        request.version = message.version();
        request.keepAlive = keepAlive;
        for (const auto& field : message) {
            request.add(std::string(field.name_string()), std::string(field.value()));
        }
        request.peer = _peer;
        return request;
    }

    void handled(bool keepOpen) {
        _answered = true;
        _keepOpen = keepOpen;
        write();
    }

    // Writes what is there, a slice at a time, so that each gets its time.
    void write() {
        if (_writing || _backlog.lost()) {
            return;
        }
        if (_output.empty()) {
            if (std::exchange(_answered, false)) {
                _keepOpen ? awaitRequest() : end();
            }
            return;
        }
        _writing = true;
        const std::string& bytes = _output.front();
        const std::size_t count = std::min(sliceBytes, bytes.size() - _writtenBytes);
        expireAfter(_host.limits.sendTime);
        asio::async_write(_stream, asio::buffer(bytes.data() + _writtenBytes, count),
                          [self = self()](error_code error, std::size_t written) {
                              if (error) {
                                  self->_backlog.lose();
                              } else {
                                  self->written(written);
                              }
                          });
    }

    void written(std::size_t count) {
        _writing = false;
        _backlog.sent(count);
        _writtenBytes += count;
        if (_writtenBytes == _output.front().size()) {
            _spares.give(std::move(_output.front()));
            _output.pop_front();
            _writtenBytes = 0;
        }
        write();
    }

    // A request that could not be read.
    void refuse(const error_code& error) {
        if (const std::optional<BadRequest> badRequest = refusalOf(error)) {
            refuse(*badRequest);
        }
    }
    void refuse(const BadRequest& badRequest) {
        if (_backlog.lost()) {
            return;
        }
        enterState(State::working);
        _output.push_back(refusal(badRequest, false));
        _backlog.add(_output.back().size(), _host.workers);
        handled(false);
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

    static constexpr char continueText[] = "HTTP/1.1 100 Continue\r\n\r\n";
    static constexpr std::string_view continueHead{continueText, sizeof(continueText) - 1};

    SessionHost& _host;
    Stream _stream;
    const std::string _peer;
    beast::flat_buffer _input;
    std::optional<Parser> _parser;
    std::deque<std::string> _output;
    std::size_t _writtenBytes = 0; // of the first of _output
    bool _answered = false;        // all of the response is in _output
    bool _keepOpen = false;        // after this response
    bool _writing = false;         // a write is under way
    Backlog _backlog;              // bytes on the way to _output, or in it
    SparePieces _spares;
};

} // namespace smisd
