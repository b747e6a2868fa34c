// HTTP/1.1 on TCP and TLS.
//
// One thread does all that waits for clients; operations run on a fixed number of workers. So a
// slow or silent client costs the others nothing, and neither do strangers, who have half of the
// connections at most, and no workers.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "server/http/HttpMessage.h"

namespace smisd {

// Carries out a request, whose body is there now, and returns whether the connection stays open;
// called by a worker. What it throws ends the connection.
using HttpJob = std::function<bool(std::string body, ResponseChannel& channel)>;

// What becomes of a request, judged by its head. Without job and refusal the connection ends.
struct Admission {
    HttpJob job{}; // it is accepted
    // It is not: the response, after which the connection may stay open.
    std::function<std::string(bool keepOpen)> refusal{};
    bool keepOpen = false;
    // Who sent it, has proved that, and has a share of the workers; nothing for a stranger.
    std::optional<std::string> user{};
};

// Judges the head of each request before its body is read: calls `decide` once, before it returns
// or later, on any thread. Called on the I/O thread, so it does not wait.
using Decide = std::function<void(Admission)>;
using HttpAdmission = std::function<void(HttpRequest head, Decide decide)>;

struct ListenAddress {
    std::string address;     // numeric, IPv4 or IPv6
    unsigned short port = 0; // 0: one that is free
};

// "127.0.0.1:5988", "[::1]:5988"
std::string toString(const ListenAddress& address);

// Listeners, the I/O thread and the workers.
class HttpServer {
public:
    HttpServer(const HttpLimits& limits, HttpAdmission admission);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    // Starts to listen and returns the port; connections are accepted, and signals that come from
    // now on are heeded, once run() is called. Throws std::runtime_error that names the address or
    // the file at fault.
    unsigned short listen(const ListenAddress& address);
    unsigned short listenTls(const ListenAddress& address, const std::string& certificateFile,
                             const std::string& keyFile);

    // Has it called, which must not throw, by the thread of run() after the certificates were read
    // again. Before run().
    void onReload(std::function<void()> call);

    // Serves until SIGTERM or SIGINT, or until stop() is called: then listening ends, requests that
    // were received are answered, within the limit's time, and it returns. SIGHUP reads
    // certificates and keys again; bad ones change nothing and are told to the log.
    void run();

    // Thread-safe.
    void stop();

    // Thread-safe: connections that are open, connections that were refused because too many were,
    // and workers that carry an operation out.
    unsigned connections() const;
    std::uint64_t refusedConnections() const;
    unsigned busyWorkers() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};

} // namespace smisd
