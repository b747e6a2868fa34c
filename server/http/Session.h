// One connection of HttpServer.
#pragma once

#include <chrono>
#include <string>
#include <utility>

#include "server/http/Crowd.h"

namespace smisd {

class OpenSessions;

// A connection as the server sees it. The I/O thread's.
class Session {
public:
    using Clock = std::chrono::steady_clock;

    enum class State {
        idle,      // waits for the next request
        receiving, // a request, or a TLS handshake
        sending,   // a part of a response, which the client takes
        ending,    // nothing more is sent, the client may read
        working,   // a password is looked at, or a request is carried out
        closed,
    };

    explicit Session(Origin origin) : _origin(std::move(origin)) {}
    virtual ~Session() = default;

    // Ends it at once; a request in progress gets ConnectionLost.
    virtual void close() = 0;

    const Origin& origin() const { return _origin; }
    const std::string& user() const { return _user; } // "" before there is one, or without names
    State state() const { return _state; }
    Clock::time_point since() const { return _since; } // it entered the state

    // Whether it is the client who has to do something next.
    bool awaitsClient() const { return _state < State::working; }
    // Whether it keeps memory until the client has: a body, or a response.
    virtual bool holdsMemory() const { return false; }

protected:
    void enterState(State state) {
        _state = state;
        _since = Clock::now();
    }

    std::string _user;

private:
    const Origin _origin;
    State _state = State::idle;
    Clock::time_point _since;
};

// Serves the client at the other end of a PlainStream or TlsStream, until one of both ends the
// connection. On the I/O thread; returns at once.
template<class Stream>
void startSession(OpenSessions& sessions, Stream stream, Origin origin);

} // namespace smisd
