// One connection of HttpServer. Included by HttpServer.cpp alone.
#pragma once

#include "server/http/HttpLimits.h"
#include "server/http/HttpMessage.h"
#include "server/http/ResponseHead.h"
#include "server/http/SessionHost.h"

#include <boost/beast/http.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

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
        : _host(host), _stream(std::move(stream)), _timer(host.io), _peer(std::move(peer)) {
        _host.sessions.insert(this);
    }
    ~Session() override { _host.sessions.erase(this); }

    void start() {
        expireAfter(_host.limits.requestTime);
        openStream(_stream, [self = self()](error_code error) {
            if (!error) {
                self->awaitRequest();
            }
        });
    }

    void stop() override {
        if (!_handling && !_answered) {
            close();
        }
    }

    // ResponseChannel, on a worker.
    void send(std::string bytes) override {
        if (_lost) {
            throw ConnectionLost();
        }
        asio::post(_host.io, [self = self(), bytes = std::move(bytes)]() mutable {
            self->_output.push_back(std::move(bytes));
            self->write();
        });
    }
    void delay(std::chrono::milliseconds time) override {
        asio::post(_host.io, [self = self(), time] { self->_delay = time; });
    }

private:
    static constexpr std::size_t sliceBytes = 64 * 1024;
    static constexpr std::chrono::seconds lingerTime{2};
    using Parser = http::request_parser<http::string_body>;

    std::shared_ptr<Session> self() { return this->shared_from_this(); }
    void expireAfter(std::chrono::seconds time) {
        beast::get_lowest_layer(_stream).expires_after(time);
    }
    void close() {
        _lost = true;
        beast::get_lowest_layer(_stream).close();
    }

    void awaitRequest() {
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
                                            self->readHead();
                                        }
                                    });
        }
    }

    void readHead() {
        _parser.emplace();
        _parser->header_limit(static_cast<std::uint32_t>(_host.limits.headerBytes));
        _parser->body_limit(_host.limits.bodyBytes);
        expireAfter(_host.limits.requestTime);
        http::async_read_header(_stream, _input, *_parser,
                                [self = self()](error_code error, std::size_t) {
                                    if (error) {
                                        self->refuse(error);
                                    } else {
                                        self->checkLength();
                                    }
                                });
    }

    void checkLength() {
        const auto& head = _parser->get();
        const bool hasLength = _parser->content_length().has_value() || _parser->chunked();
        if (!hasLength && head.method_string().ends_with("POST")) {
            refuse(BadRequest(411, "", "The request has no Content-Length"));
        } else if (beast::iequals(head[http::field::expect], "100-continue")) {
            asio::async_write(_stream, asio::buffer(continueHead),
                              [self = self()](error_code error, std::size_t) {
                                  if (!error) {
                                      self->readBody();
                                  }
                              });
        } else {
            readBody();
        }
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

    // On a worker; the connection is the worker's until handled().
    void handle() {
        _handling = true;
        asio::post(_host.workers, [self = self(), request = receivedRequest(),
                                   work = asio::make_work_guard(_host.io)]() mutable {
            bool keepOpen = false;
            try {
                keepOpen = self->_host.handler(std::move(request), *self);
            } catch (const ConnectionLost&) {
            } catch (const std::exception& error) {
                spdlog::error("{}: connection ended: {}", self->_peer, error.what());
            } catch (...) { // Pegasus' exceptions are no std::exception
                spdlog::error("{}: connection ended by an unknown error", self->_peer);
            }
            asio::io_context& io = self->_host.io;
            asio::post(io, [self = std::move(self), keepOpen] { self->handled(keepOpen); });
        });
    }

    HttpRequest receivedRequest() {
        auto message = _parser->release();
        HttpRequest request;
        request.method = std::string(message.method_string());
        request.target = std::string(message.target());
        request.version = message.version();
        request.keepAlive = message.keep_alive() && !_host.stopping;
        for (const auto& field : message) {
            request.headers.push_back(
                {std::string(field.name_string()), std::string(field.value())});
        }
        request.body = std::move(message.body());
        request.peer = _peer;
        return request;
    }

    void handled(bool keepOpen) {
        _handling = false;
        _answered = true;
        _keepOpen = keepOpen;
        write();
    }

    // Writes what is there, a slice at a time, so that each gets its time.
    void write() {
        if (_writing || _lost) {
            return;
        }
        if (_output.empty()) {
            if (std::exchange(_answered, false)) {
                _keepOpen ? awaitRequest() : end();
            }
            return;
        }
        _writing = true;
        if (_delay.count() > 0) {
            _timer.expires_after(std::exchange(_delay, {}));
            _timer.async_wait([self = self()](error_code) { self->written(0); });
            return;
        }
        const std::string& bytes = _output.front();
        const std::size_t count = std::min(sliceBytes, bytes.size() - _writtenBytes);
        expireAfter(_host.limits.sendTime);
        asio::async_write(_stream, asio::buffer(bytes.data() + _writtenBytes, count),
                          [self = self()](error_code error, std::size_t written) {
                              if (error) {
                                  self->_lost = true;
                              } else {
                                  self->written(written);
                              }
                          });
    }

    void written(std::size_t count) {
        _writing = false;
        _writtenBytes += count;
        if (_writtenBytes == _output.front().size()) {
            _output.pop_front();
            _writtenBytes = 0;
        }
        write();
    }

    // A request that could not be read.
    void refuse(const error_code& error) {
        struct Answer {
            http::error error;
            unsigned status;
            const char* detail;
        };
        static constexpr Answer answers[] = {
            {http::error::body_limit, 413, "The body of the request is too large"},
            {http::error::header_limit, 431, "The headers of the request are too large"},
            {http::error::bad_content_length, 400, "Invalid Content-Length header detected"},
            {http::error::multiple_content_length, 400, "Duplicate Content-Length header detected"},
        };
        if (error.category() != make_error_code(http::error::bad_method).category() ||
            error == http::error::end_of_stream || error == http::error::partial_message) {
            return; // closed, lost or too slow
        }
        const auto* answer =
            std::find_if(std::begin(answers), std::end(answers),
                         [&](const Answer& entry) { return error == entry.error; });
        refuse(answer != std::end(answers) ? BadRequest(answer->status, "", answer->detail)
                                           : BadRequest(400, "", error.message()));
    }
    void refuse(const BadRequest& badRequest) {
        _output.push_back(refusal(badRequest, false));
        _answered = true;
        _keepOpen = false;
        write();
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
    asio::steady_timer _timer;
    const std::string _peer;
    beast::flat_buffer _input;
    std::optional<Parser> _parser;
    std::deque<std::string> _output;
    std::size_t _writtenBytes = 0;       // of the first of _output
    std::chrono::milliseconds _delay{0}; // before the next write
    bool _handling = false;              // the request is on a worker
    bool _answered = false;              // all of the response is in _output
    bool _keepOpen = false;              // after this response
    bool _writing = false;               // a write or a delay is under way
    std::atomic<bool> _lost{false};      // the connection; any thread
};

} // namespace smisd
