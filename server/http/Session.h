// One connection of HttpServer.
#pragma once

#include <chrono>
#include <string>

namespace smisd {

class OpenSessions;

// A connection as the server sees it. The I/O thread's.
class Session {
public:
    using Clock = std::chrono::steady_clock;

    enum class State {
        idle,      // waits for the next request
        receiving, // a request, or a TLS handshake
        working,   // a request is handled, its response is sent
        closed,
    };

    virtual ~Session() = default;

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

// Serves the client at the other end of a PlainStream or TlsStream, whose address is `peer`, until
// one of both ends the connection. On the I/O thread; returns at once.
template<class Stream>
void startSession(OpenSessions& sessions, Stream stream, std::string peer);

} // namespace smisd
