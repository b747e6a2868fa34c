#include "server/http/OpenSessions.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <tuple>
#include <utility>

#include <spdlog/spdlog.h>

namespace smisd {
namespace {

// A client that has taken less time than this is not slow.
constexpr std::chrono::milliseconds leastWait{500};

// What a closed session held is given back by its worker.
constexpr std::chrono::milliseconds timeToFree{10};

// Half of the connections may be strangers', and where there are few, all.
constexpr unsigned fewConnections = 16;

// Among all strangers for one that is slow: a flood is not to cause one search each.
constexpr std::chrono::milliseconds timeBetweenSearches{20};

constexpr std::chrono::milliseconds faultPause{50};

template<class Action>
void forEach(const Crowd& crowd, Action action) {
    const auto& sessions = crowd.sessions();
    for (auto next = sessions.begin(); next != sessions.end();) {
        Session& session = **next++; // which may leave
        action(session);
    }
}

// A fault may leave no memory to tell of it.
void tell(const char* what) {
    try {
        spdlog::error("connection ended: {}", what);
    } catch (...) {
    }
}

} // namespace

OpenSessions::OpenSessions(const HttpLimits& theLimits, HttpAdmission theAdmission)
    : limits(theLimits), admission(std::move(theAdmission)), workers(theLimits.workers) {}

void OpenSessions::enter(Session& session) {
    _strangers.add(session);
    ++_count;
}

void OpenSessions::becomeUsers(Session& session) {
    _users.add(session);
    _strangers.remove(session);
}

void OpenSessions::leave(Session& session) {
    const std::size_t before = _strangers.size() + _users.size();
    _strangers.remove(session);
    _users.remove(session);
    const std::size_t gone = before - _strangers.size() - _users.size();
    if (gone == 0) {
        return; // left before
    }
    _count -= static_cast<unsigned>(gone);
    if (_stopping && _count == 0) {
        _stopTimer.cancel();
    }
}

std::size_t OpenSessions::mostStrangers() const {
    return std::max(limits.connections / 2, std::min(limits.connections, fewConnections));
}

bool OpenSessions::makeRoom(const Origin& newcomer) {
    const bool tooManyStrangers = _strangers.size() >= mostStrangers();
    if (_count < limits.connections && !tooManyStrangers) {
        return true;
    }
    Session* out = _strangers.largestFor(newcomer);
    const auto now = Session::Clock::now();
    const auto then = now - leastWait;
    if (out == nullptr && now >= _noStrangerWaitsUntil) {
        out = _strangers.waitingSince(then);
        _noStrangerWaitsUntil = out == nullptr ? now + timeBetweenSearches : now;
    }
    if (out == nullptr && !tooManyStrangers) {
        out = _users.waitingSince(then);
    }
    if (out != nullptr) {
        out->close();
    }
    return out != nullptr;
}

void OpenSessions::freeMemory(const std::string& user) {
    const auto now = Session::Clock::now();
    if (now - _freed < timeToFree) {
        return;
    }
    const auto order = [&](const Session& session) {
        return std::tuple(session.user() != user, session.since());
    };
    Session* first = nullptr;
    for (Session* const session : _users.sessions()) {
        if (session->holdsMemory() && session->since() < now - leastWait &&
            (first == nullptr || order(*session) < order(*first))) {
            first = session;
        }
    }
    if (first != nullptr) {
        _freed = now;
        spdlog::warn("{}: connection ended: its memory is needed", first->origin().address);
        first->close();
    }
}

void OpenSessions::stop() {
    _stopping = true;
    for (const Crowd* const crowd : {&_strangers, &_users}) {
        forEach(*crowd, [](Session& session) {
            if (session.state() == Session::State::idle ||
                session.state() == Session::State::receiving) {
                session.close();
            }
        });
    }
    if (_count == 0) {
        return;
    }
    _stopTimer.expires_after(limits.stopTime);
    _stopTimer.async_wait([this](const boost::system::error_code& cancelled) {
        if (!cancelled) {
            for (const Crowd* const crowd : {&_strangers, &_users}) {
                forEach(*crowd, [](Session& session) { session.close(); });
            }
        }
    });
}

void OpenSessions::run(const std::function<void()>& prepare) {
    for (;;) {
        bool prepared = false;
        try {
            prepare();
            prepared = true;
            io.run();
            return;
        } catch (const std::exception& error) {
            tell(error.what());
        } catch (...) {
            tell("unknown error");
        }
        if (!prepared) {
            std::this_thread::sleep_for(faultPause);
        }
    }
}

} // namespace smisd
