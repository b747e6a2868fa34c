// What the sessions of a server share, and what plain and TLS streams differ in. Included by
// HttpServer.cpp alone.
#pragma once

#include "server/http/HttpLimits.h"
#include "server/http/HttpServer.h"

#include <boost/asio.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/ssl.hpp>

#include <spdlog/spdlog.h>

#include <exception>
#include <functional>
#include <set>
#include <utility>

namespace smisd {

namespace asio = boost::asio;
namespace beast = boost::beast;
using boost::system::error_code;
using Plain = beast::tcp_stream;
using Tls = beast::ssl_stream<beast::tcp_stream>;

class SessionBase {
public:
    virtual ~SessionBase() = default;
    // Ends a session that waits for a request; another ends after its response.
    virtual void stop() = 0;
};

// What the sessions of a server share. All but the constants belongs to the I/O thread.
struct SessionHost {
    SessionHost(const HttpLimits& theLimits, HttpHandler theHandler)
        : limits(theLimits), handler(std::move(theHandler)), workers(theLimits.workers) {}

    // Runs the I/O thread to its end. What goes wrong in one session ends that session only.
    void run() {
        for (;;) {
            try {
                io.run();
                return;
            } catch (const std::exception& error) {
                spdlog::error("connection ended: {}", error.what());
            }
        }
    }

    const HttpLimits limits;
    const HttpHandler handler;
    std::set<SessionBase*> sessions; // outlives what io still holds of them
    bool stopping = false;
    asio::io_context io{1};
    asio::thread_pool workers;
};

inline void openStream(Plain&, std::function<void(error_code)> opened) {
    opened({});
}
inline void openStream(Tls& stream, std::function<void(error_code)> opened) {
    stream.async_handshake(asio::ssl::stream_base::server, std::move(opened));
}

// Says that nothing more will be sent.
inline void endStream(Plain& stream, std::function<void(error_code)> ended) {
    error_code ignored;
    stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
    ended({});
}
inline void endStream(Tls& stream, std::function<void(error_code)> ended) {
    stream.async_shutdown(std::move(ended));
}

} // namespace smisd
