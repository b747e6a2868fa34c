// The open sessions of an HttpServer, and what they share.
#pragma once

#include <atomic>
#include <chrono>
#include <set>

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "server/http/HttpMessage.h"
#include "server/http/HttpServer.h"
#include "server/http/Session.h"
#include "server/http/WorkerPool.h"

namespace smisd {

// Belongs to the I/O thread, but for the constants, the workers and count().
class OpenSessions {
public:
    OpenSessions(const HttpLimits& limits, HttpHandler handler, HttpAdmission admission);

    // A session is there from its first moment to its last.
    void enter(Session& session);
    void leave(Session& session);

    // For any thread.
    unsigned count() const { return _count; }

    // Closes, for a new connection, the session that has waited longest for its next request, or
    // else for the rest of one; returns whether there was any.
    bool makeRoom();

    // Ends the sessions: requests in progress are answered, within their time.
    void stop();
    bool stopping() const { return _stopping; }

    // Runs the I/O thread to its end. What goes wrong in one session ends that session only.
    void run();

    const HttpLimits limits;
    const HttpHandler handler;
    const HttpAdmission admission;

private:
    Session* oldestIn(Session::State state) const;

    std::atomic<unsigned> _count{0}; // of the open sessions
    bool _stopping = false;
    std::set<Session*> _sessions; // before io, which may hold some of them to its end

public:
    boost::asio::io_context io{1};
    WorkerPool workers;

private:
    boost::asio::steady_timer _stopTimer{io};
};

} // namespace smisd
