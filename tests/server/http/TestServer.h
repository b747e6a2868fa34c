// A running HttpServer and a client that speaks bytes.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include <boost/asio.hpp>
#include <gtest/gtest.h>

#include "server/http/HttpServer.h"

namespace smisd::test {

// Carries out a request that was accepted, and returns whether the connection stays open.
using HttpHandler = std::function<bool(const HttpRequest& request, ResponseChannel& channel)>;

// Accepts every request, as one of a user's.
inline HttpAdmission accepting(HttpHandler handler) {
    return [handler = std::move(handler)](HttpRequest head, const Decide& decide) {
        decide({[handler, head = std::move(head)](std::string body, ResponseChannel& channel) {
                    HttpRequest request = head;
                    request.body = std::move(body);
                    return handler(request, channel);
                },
                {},
                false,
                ""});
    };
}

// Serves `handler` on a free port of 127.0.0.1 until it is destroyed.
class TestServer {
public:
    explicit TestServer(HttpHandler handler, const HttpLimits& limits = {})
        : TestServer(limits, accepting(std::move(handler))) {}
    TestServer(const HttpLimits& limits, HttpAdmission admission)
        : server(limits, std::move(admission)), port(server.listen({"127.0.0.1", 0})),
          _thread([this] { server.run(); }) {}
    ~TestServer() { stop(); }

    // Returns once the server has ended.
    void stop() {
        if (_thread.joinable()) {
            server.stop();
            _thread.join();
        }
    }

    HttpServer server;
    const unsigned short port;

private:
    std::thread _thread;
};

// One connection. A read that gets nothing for five seconds fails the test.
class TestClient {
public:
    explicit TestClient(unsigned short port, const std::string& from = "127.0.0.1") : _socket(_io) {
        _socket.open(boost::asio::ip::tcp::v4());
        _socket.bind({boost::asio::ip::make_address_v4(from), 0});
        _socket.connect({boost::asio::ip::address_v4::loopback(), port});
    }

    void send(const std::string& bytes) { boost::asio::write(_socket, boost::asio::buffer(bytes)); }

    // What arrives up to and with `end`.
    std::string readUntil(const std::string& end) {
        while (_received.find(end) == std::string::npos && readSome()) {
        }
        const size_t at = _received.find(end);
        const size_t size = at == std::string::npos ? _received.size() : at + end.size();
        std::string text = _received.substr(0, size);
        _received.erase(0, size);
        return text;
    }

    // What arrives until the server closes.
    std::string readAll() {
        while (readSome()) {
        }
        return std::exchange(_received, {});
    }

    boost::asio::ip::tcp::socket& socket() { return _socket; }

private:
    bool readSome() {
        std::string buffer(65536, '\0');
        bool read = false;
        _socket.async_read_some(boost::asio::buffer(buffer),
                                [&](boost::system::error_code error, size_t count) {
                                    read = !error;
                                    _received.append(buffer, 0, count);
                                });
        _io.restart();
        _io.run_for(std::chrono::seconds(5));
        if (!_io.stopped()) {
            ADD_FAILURE() << "nothing came for 5 seconds";
            _socket.cancel();
            _io.run();
        }
        return read;
    }

    boost::asio::io_context _io;
    boost::asio::ip::tcp::socket _socket;
    std::string _received;
};

inline std::string answer(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

// Answers with the body of the request between brackets.
inline bool echo(const HttpRequest& request, ResponseChannel& channel) {
    channel.send(answer("[" + request.body + "]"));
    return request.keepAlive;
}

// Lets handlers wait until the test lets them go on.
class Gate {
public:
    void wait() {
        std::unique_lock lock(_mutex);
        ++_waiting;
        _changed.notify_all();
        _changed.wait(lock, [this] { return _open; });
    }
    void awaitWaiting(int count) {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [&] { return _waiting >= count; });
    }
    void open() {
        const std::lock_guard lock(_mutex);
        _open = true;
        _changed.notify_all();
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    int _waiting = 0;
    bool _open = false;
};

inline std::string post(const std::string& body, const std::string& headers = "") {
    return "POST / HTTP/1.1\r\nHost: x\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
           headers + "\r\n" + body;
}

} // namespace smisd::test
