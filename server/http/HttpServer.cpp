#include "server/http/HttpServer.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <list>
#include <optional>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include <boost/asio.hpp>
#include <boost/beast/ssl.hpp>
#include <openssl/err.h>
#include <spdlog/spdlog.h>

#include "server/http/HttpResponse.h"
#include "server/http/OpenSessions.h"
#include "server/http/Session.h"
#include "server/http/Tls.h"

namespace smisd {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

// Time for file descriptors or memory to become free when there are none.
constexpr std::chrono::milliseconds acceptPause{100};

// After so many new connections the open ones have their turn.
constexpr int acceptedAtOnce = 128;

// How often the log tells of refused connections, and of connections that cannot be accepted.
constexpr std::chrono::seconds tellingPause{10};

// After which a refused client may try again.
constexpr std::chrono::seconds refusedTime{1};
constexpr unsigned responsesInASecond = 100;

[[noreturn]] void failToListen(const ListenAddress& address, const error_code& error) {
    throw std::runtime_error("cannot listen on " + toString(address) + ": " + error.message());
}

struct Listener {
    tcp::acceptor acceptor;
    asio::steady_timer pause;
    std::optional<TlsFiles> files; // nothing: plain
    std::unique_ptr<asio::ssl::context> tls;
    bool waits = false; // for a new connection, or for the end of a pause
};

// A connection that nobody owns yet.
class Accepted {
public:
    explicit Accepted(int descriptor) : _descriptor(descriptor) {}
    ~Accepted() {
        if (_descriptor >= 0) {
            ::close(_descriptor);
        }
    }
    Accepted(const Accepted&) = delete;
    Accepted& operator=(const Accepted&) = delete;

    int get() const { return _descriptor; }
    tcp::socket socket(asio::io_context& io, const tcp::endpoint& peer) {
        tcp::socket socket(io);
        socket.assign(peer.protocol(), _descriptor);
        _descriptor = -1;
        return socket;
    }

private:
    int _descriptor;
};

// Says so once in a while, and how often it was.
class Told {
public:
    // Returns the number of times since it was last told; 0 when it is too early to tell.
    std::uint64_t count() {
        ++_count;
        const auto now = std::chrono::steady_clock::now();
        if (now < _next) {
            return 0;
        }
        _next = now + tellingPause;
        return std::exchange(_count, 0);
    }

private:
    std::uint64_t _count = 0;
    std::chrono::steady_clock::time_point _next{};
};

tcp::acceptor openAcceptor(asio::io_context& io, const ListenAddress& address) {
    error_code error;
    const asio::ip::address numeric = asio::ip::make_address(address.address, error);
    if (error) {
        failToListen(address, error);
    }
    const tcp::endpoint endpoint(numeric, address.port);
    tcp::acceptor acceptor(io);
    acceptor.open(endpoint.protocol(), error);
    if (!error) {
        acceptor.set_option(tcp::acceptor::reuse_address(true), error);
    }
    if (!error) {
        acceptor.bind(endpoint, error);
    }
    if (!error) {
        acceptor.listen(tcp::acceptor::max_listen_connections, error);
    }
    if (!error) {
        acceptor.non_blocking(true, error);
    }
    if (error) {
        failToListen(address, error);
    }
    return acceptor;
}

} // namespace

std::string toString(const ListenAddress& address) {
    const bool isV6 = address.address.find(':') != std::string::npos;
    return (isV6 ? "[" + address.address + "]" : address.address) + ":" +
           std::to_string(address.port);
}

struct HttpServer::Implementation {
    Implementation(const HttpLimits& limits, HttpAdmission admission)
        : sessions(limits, std::move(admission)) {}

    unsigned short add(const ListenAddress& address, const std::optional<TlsFiles>& files) {
        signals.add(SIGINT);
        signals.add(SIGTERM);
        reloadSignal.add(SIGHUP);
        auto tls = files ? openTls(*files) : nullptr;
        listeners.push_back({openAcceptor(sessions.io, address), asio::steady_timer(sessions.io),
                             files, std::move(tls)});
        return listeners.back().acceptor.local_endpoint().port();
    }

    // Connections that are open keep the certificate that they began with.
    void reload() {
        for (Listener& listener : listeners) {
            if (!listener.files) {
                continue;
            }
            try {
                listener.tls = openTls(*listener.files);
                spdlog::info("new connections get the certificate {}", listener.files->certificate);
            } catch (const std::runtime_error& error) {
                spdlog::error("the certificate in use stays: {}", error.what());
            }
        }
        onReload();
    }

    // Everything that the server waits for besides its sessions; what it waits for already stays.
    void awaitAll() {
        if (stopped) {
            return;
        }
        awaitStop();
        awaitReload();
        for (Listener& listener : listeners) {
            awaitConnection(listener);
        }
    }

    void awaitStop() {
        if (!std::exchange(waitsForStop, true)) {
            orAgain(waitsForStop, [this] {
                signals.async_wait([this](error_code error, int) {
                    waitsForStop = false;
                    if (!error) {
                        shutDown();
                    }
                });
            });
        }
    }

    void awaitReload() {
        if (!std::exchange(waitsForReload, true)) {
            orAgain(waitsForReload, [this] {
                reloadSignal.async_wait([this](error_code error, int) {
                    waitsForReload = false;
                    if (!error) {
                        reload();
                        awaitReload();
                    }
                });
            });
        }
    }

    void awaitConnection(Listener& listener) {
        if (!stopped && !std::exchange(listener.waits, true)) {
            orAgain(listener.waits, [this, &listener] {
                listener.acceptor.async_wait(tcp::acceptor::wait_read,
                                             [this, &listener](error_code error) {
                                                 listener.waits = false;
                                                 if (error != asio::error::operation_aborted) {
                                                     acceptAll(listener);
                                                 }
                                             });
            });
        }
    }

    // Waits until there may be memory or descriptors again.
    void pause(Listener& listener) {
        listener.waits = true;
        orAgain(listener.waits, [this, &listener] {
            listener.pause.expires_after(acceptPause);
            listener.pause.async_wait([this, &listener](error_code cancelled) {
                listener.waits = false;
                if (!cancelled) {
                    awaitConnection(listener);
                }
            });
        });
    }

    // Begins to wait for something; if that fails, awaitAll() is to try again.
    template<class Begin>
    void orAgain(bool& waits, Begin begin) {
        try {
            begin();
        } catch (...) {
            waits = false;
            throw;
        }
    }

    // Whatever a connection runs into here, the next one is accepted.
    void acceptAll(Listener& listener) {
        if (stopped) {
            return;
        }
        try {
            for (int i = 0; i < acceptedAtOnce && acceptOne(listener); ++i) {
            }
            awaitConnection(listener);
        } catch (const std::exception& error) {
            if (const std::uint64_t count = toldFaults.count()) {
                spdlog::warn("cannot accept a connection: {} ({} since last told)", error.what(),
                             count);
            }
            pause(listener);
        }
    }

    // Returns whether there was one. Throws when there is no descriptor or no memory for it.
    bool acceptOne(Listener& listener) {
        tcp::endpoint peer;
        auto length = static_cast<socklen_t>(peer.capacity());
        Accepted accepted(
            ::accept4(listener.acceptor.native_handle(), peer.data(), &length, SOCK_CLOEXEC));
        if (accepted.get() < 0) {
            return onlyThisOneFailed(errno);
        }
        peer.resize(length);
        Origin origin(peer.address().to_string());
        if (!sessions.makeRoom(origin)) {
            refuse(listener, accepted);
            return true;
        }
        tcp::socket socket = accepted.socket(sessions.io, peer);
        error_code ignored;
        socket.set_option(tcp::no_delay(true), ignored);
        if (listener.tls) {
            startSession(sessions, TlsStream(std::move(socket), *listener.tls), std::move(origin));
        } else {
            startSession(sessions, PlainStream(std::move(socket)), std::move(origin));
        }
        return true;
    }

    // Whether the next connection may be accepted at once after this error. False when there is
    // none; throws when the next one would fail too.
    static bool onlyThisOneFailed(int error) {
        switch (error) {
        case EAGAIN:
            return false;
        case EMFILE:
        case ENFILE:
        case ENOBUFS:
        case ENOMEM:
            throw boost::system::system_error(error_code(error, boost::system::system_category()));
        default: // it is gone already, or its network has a fault
            return true;
        }
    }

    // One connection too many: what fits into the empty send buffer.
    void refuse(const Listener& listener, const Accepted& accepted) {
        ++refused;
        if (const std::uint64_t count = toldRefusals.count()) {
            spdlog::warn("refused {} connections: {} are open", count, sessions.count());
        }
        if (!listener.tls && mayRespond()) {
            static const std::string response =
                unavailable("Too many connections are open", refusedTime, false);
            // The rest is the client's own fault: it is not there any more.
            (void)!::send(accepted.get(), response.data(), response.size(),
                          MSG_DONTWAIT | MSG_NOSIGNAL);
        }
    }

    // A flood is not told one by one: that takes longer than all the rest of a refusal.
    bool mayRespond() {
        const auto now = std::chrono::steady_clock::now();
        if (now - responsesSince > std::chrono::seconds(1)) {
            responsesSince = now;
            responses = 0;
        }
        return ++responses <= responsesInASecond;
    }

    void shutDown() {
        stopped = true;
        signals.cancel();
        reloadSignal.cancel();
        for (Listener& listener : listeners) {
            listener.acceptor.close();
            listener.pause.cancel();
        }
        sessions.stop();
    }

    OpenSessions sessions;
    std::list<Listener> listeners;
    std::function<void()> onReload = [] {};
    asio::signal_set signals{sessions.io};
    asio::signal_set reloadSignal{sessions.io};
    bool waitsForStop = false;
    bool waitsForReload = false;
    bool stopped = false;
    std::atomic<std::uint64_t> refused{0};
    unsigned responses = 0; // to refused connections, since
    std::chrono::steady_clock::time_point responsesSince{};
    Told toldRefusals;
    Told toldFaults;
};

HttpServer::HttpServer(const HttpLimits& limits, HttpAdmission admission)
    : _implementation(std::make_unique<Implementation>(limits, std::move(admission))) {}

HttpServer::~HttpServer() = default;

unsigned short HttpServer::listen(const ListenAddress& address) {
    return _implementation->add(address, std::nullopt);
}

unsigned short HttpServer::listenTls(const ListenAddress& address,
                                     const std::string& certificateFile,
                                     const std::string& keyFile) {
    return _implementation->add(address, TlsFiles{certificateFile, keyFile});
}

void HttpServer::onReload(std::function<void()> call) {
    _implementation->onReload = std::move(call);
}

void HttpServer::run() {
    Implementation& server = *_implementation;
    ERR_clear_error(); // makes what OpenSSL needs in this thread to tell of a lack of memory
    server.sessions.run([&server] { server.awaitAll(); });
    server.sessions.workers.join();
    server.sessions.strangersWorker.join();
}

void HttpServer::stop() {
    asio::post(_implementation->sessions.io, [this] { _implementation->shutDown(); });
}

unsigned HttpServer::connections() const {
    return _implementation->sessions.count();
}

std::uint64_t HttpServer::refusedConnections() const {
    return _implementation->refused;
}

unsigned HttpServer::busyWorkers() const {
    return _implementation->sessions.workers.running();
}

} // namespace smisd
