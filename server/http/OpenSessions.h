// The open sessions of an HttpServer, and what they share.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "server/http/Crowd.h"
#include "server/http/HttpMessage.h"
#include "server/http/HttpServer.h"
#include "server/http/Session.h"
#include "server/http/WorkerPool.h"

namespace smisd {

// Belongs to the I/O thread, but for the constants, the workers and count().
class OpenSessions {
public:
    OpenSessions(const HttpLimits& limits, HttpAdmission admission);

    // A session is there from its first moment until it is closed, first as a stranger's, then,
    // after a request that was accepted, as a user's.
    void enter(Session& session);
    void becomeUsers(Session& session);
    void leave(Session& session);

    // For any thread.
    unsigned count() const { return _count; }

    // Whether one more connection, from there, may be opened. If that would be too many, or too
    // many of strangers, it closes another one, if it may: a stranger's of those of whom there are
    // most; or one that has kept the server waiting for a while.
    bool makeRoom(const Origin& newcomer);

    // There is no memory for a user: closes the session, one of the same user if possible, that has
    // kept the server waiting with some for longest, if any has for a while. Called again and
    // again, it closes one at a time.
    void freeMemory(const std::string& user);

    // Ends the sessions: requests in progress are answered, within their time.
    void stop();
    bool stopping() const { return _stopping; }

    // Runs the I/O thread to its end. What goes wrong in one session ends that session only. At the
    // beginning and after each such fault calls `prepare`, which makes good what the fault may have
    // cut off.
    void run(const std::function<void()>& prepare);

    const HttpLimits limits;
    const HttpAdmission admission;

private:
    std::size_t mostStrangers() const;

    std::atomic<unsigned> _count{0}; // of the open sessions
    bool _stopping = false;
    Session::Clock::time_point _noStrangerWaitsUntil{}; // for half a second
    Crowd _strangers; // before io, which may hold some of them to its end
    Crowd _users;
    Session::Clock::time_point _freed; // when one was closed for its memory

public:
    boost::asio::io_context io{1};
    WorkerPool workers;
    WorkerPool strangersWorker{1}; // carries out what needs no password

private:
    boost::asio::steady_timer _stopTimer{io};
};

} // namespace smisd
