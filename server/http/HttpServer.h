// HTTP/1.1 on TCP and TLS.
//
// One thread does all that waits for clients; operations run on a fixed number of workers. So a
// slow or silent client costs the others nothing.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "server/http/HttpMessage.h"

namespace smisd {

// Carries out one request and returns whether the connection stays open; called by several threads
// at once. What it throws ends the connection.
using HttpHandler = std::function<bool(HttpRequest request, ResponseChannel& channel)>;

// Judges a request by its head, before a long body is read: whether the body is wanted. If not, it
// has answered, and the connection ends. Else as HttpHandler.
using HttpAdmission = std::function<bool(const HttpRequest& head, ResponseChannel& channel)>;

struct ListenAddress {
    std::string address;     // numeric, IPv4 or IPv6
    unsigned short port = 0; // 0: one that is free
};

// "127.0.0.1:5988", "[::1]:5988"
std::string toString(const ListenAddress& address);

// Listeners, the I/O thread and the workers.
class HttpServer {
public:
    HttpServer(
        const HttpLimits& limits, HttpHandler handler,
        HttpAdmission admission = [](const auto&, auto&) { return true; });
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

    // Thread-safe: connections that are open, and workers that carry an operation out.
    unsigned connections() const;
    unsigned busyWorkers() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};

} // namespace smisd
