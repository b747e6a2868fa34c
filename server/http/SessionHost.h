// What the sessions of a server share, and what plain and TLS streams differ in. Included by
// HttpServer.cpp alone.
#pragma once

#include <atomic>
#include <chrono>
#include <exception>
#include <functional>
#include <set>
#include <utility>

#include <boost/asio.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/ssl.hpp>
#include <spdlog/spdlog.h>

#include "server/http/HttpMessage.h"
#include "server/http/HttpServer.h"
#include "server/http/WorkerPool.h"

namespace smisd {

namespace asio = boost::asio;
namespace beast = boost::beast;
using boost::system::error_code;
using Plain = beast::tcp_stream;
using Tls = beast::ssl_stream<beast::tcp_stream>;

// A connection as the server sees it.
class SessionBase {
public:
    using Clock = std::chrono::steady_clock;

    enum class State { idle, receiving, working, closed };

    virtual ~SessionBase() = default;

    // Ends it at once; a request in progress gets ConnectionLost.
    virtual void close() = 0;

    State state() const { return _state; }
    Clock::time_point since() const { return _since; } // it entered the state

protected:
    void enterState(State state) {
        _state = state;
        _since = Clock::now();
    }

private:
    State _state = State::idle;
    Clock::time_point _since;
};

// What the sessions of a server share. All but the constants and the workers belongs to the I/O
// thread.
struct SessionHost {
    using State = SessionBase::State;

    SessionHost(const HttpLimits& theLimits, HttpHandler theHandler, HttpAdmission theAdmission)
        : limits(theLimits), handler(std::move(theHandler)), admission(std::move(theAdmission)),
          workers(theLimits.workers) {}

    void enter(SessionBase& session) {
        sessions.insert(&session);
        ++connections;
    }
    void leave(SessionBase& session) {
        sessions.erase(&session);
        --connections;
        if (stopping && sessions.empty()) {
            stopTimer.cancel();
        }
    }

    // Closes, for a new connection, the one that has waited longest for its next request, or else
    // for the rest of one; returns whether there was any.
    bool makeRoom() {
        for (const State state : {State::idle, State::receiving}) {
            SessionBase* oldest = oldestIn(state);
            if (oldest != nullptr && SessionBase::Clock::now() - oldest->since() > leastWait) {
                oldest->close();
                return true;
            }
        }
        return false;
    }

    // Requests in progress are answered, within their time.
    void stop() {
        stopping = true;
        closeAll([](State state) { return state == State::idle || state == State::receiving; });
        if (!sessions.empty()) {
            stopTimer.expires_after(limits.stopTime);
            stopTimer.async_wait([this](error_code cancelled) {
                if (!cancelled) {
                    closeAll([](State) { return true; });
                }
            });
        }
    }

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
    const HttpAdmission admission;
    std::set<SessionBase*> sessions;      // outlives what io still holds of them
    std::atomic<unsigned> connections{0}; // the size of sessions, for any thread
    bool stopping = false;
    asio::io_context io{1};
    asio::steady_timer stopTimer{io};
    WorkerPool workers;

private:
    // Who is quicker than this is not slow.
    static constexpr std::chrono::milliseconds leastWait{500};

    SessionBase* oldestIn(State state) const {
        SessionBase* oldest = nullptr;
        for (SessionBase* session : sessions) {
            if (session->state() == state &&
                (oldest == nullptr || session->since() < oldest->since())) {
                oldest = session;
            }
        }
        return oldest;
    }

    template<class Which>
    void closeAll(Which which) {
        for (SessionBase* session : sessions) {
            if (which(session->state())) {
                session->close();
            }
        }
    }
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
