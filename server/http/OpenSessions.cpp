#include "server/http/OpenSessions.h"

#include <exception>
#include <utility>

#include <spdlog/spdlog.h>

namespace smisd {
namespace {

// A client that has taken less time than this is not slow.
constexpr std::chrono::milliseconds leastWait{500};

bool awaitsClient(const Session& session) {
    return session.state() == Session::State::idle || session.state() == Session::State::receiving;
}

} // namespace

OpenSessions::OpenSessions(const HttpLimits& theLimits, HttpHandler theHandler,
                           HttpAdmission theAdmission)
    : limits(theLimits), handler(std::move(theHandler)), admission(std::move(theAdmission)),
      workers(theLimits.workers) {}

void OpenSessions::enter(Session& session) {
    _sessions.insert(&session);
    ++_count;
}

void OpenSessions::leave(Session& session) {
    _sessions.erase(&session);
    --_count;
    if (_stopping && _sessions.empty()) {
        _stopTimer.cancel();
    }
}

bool OpenSessions::makeRoom() {
    for (const Session::State state : {Session::State::idle, Session::State::receiving}) {
        Session* const oldest = oldestIn(state);
        if (oldest != nullptr && Session::Clock::now() - oldest->since() > leastWait) {
            oldest->close();
            return true;
        }
    }
    return false;
}

Session* OpenSessions::oldestIn(Session::State state) const {
    Session* oldest = nullptr;
    for (Session* const session : _sessions) {
        if (session->state() == state &&
            (oldest == nullptr || session->since() < oldest->since())) {
            oldest = session;
        }
    }
    return oldest;
}

void OpenSessions::stop() {
    _stopping = true;
    for (Session* const session : _sessions) {
        if (awaitsClient(*session)) {
            session->close();
        }
    }
    if (_sessions.empty()) {
        return;
    }
    _stopTimer.expires_after(limits.stopTime);
    _stopTimer.async_wait([this](const boost::system::error_code& cancelled) {
        if (!cancelled) {
            for (Session* const session : _sessions) {
                session->close();
            }
        }
    });
}

void OpenSessions::run() {
    for (;;) {
        try {
            io.run();
            return;
        } catch (const std::exception& error) {
            spdlog::error("connection ended: {}", error.what());
        }
    }
}

} // namespace smisd
