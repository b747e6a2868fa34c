#include "server/http/HttpServer.h"

#include <csignal>
#include <list>
#include <optional>
#include <stdexcept>
#include <utility>

#include <boost/asio.hpp>
#include <boost/beast/ssl.hpp>
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

// Time for file descriptors to become free when there are none.
constexpr std::chrono::milliseconds acceptPause{100};

[[noreturn]] void failToListen(const ListenAddress& address, const error_code& error) {
    throw std::runtime_error("cannot listen on " + toString(address) + ": " + error.message());
}

struct Listener {
    tcp::acceptor acceptor;
    asio::steady_timer pause;
    std::optional<TlsFiles> files; // nothing: plain
    std::unique_ptr<asio::ssl::context> tls;
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
    Implementation(const HttpLimits& limits, HttpHandler handler, HttpAdmission admission)
        : sessions(limits, std::move(handler), std::move(admission)) {}

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

    void awaitReload() {
        reloadSignal.async_wait([this](error_code error, int) {
            if (!error) {
                reload();
                awaitReload();
            }
        });
    }

    void accept(Listener& listener) {
        listener.acceptor.async_accept([this, &listener](error_code error, tcp::socket socket) {
            if (error == asio::error::operation_aborted) {
                return;
            }
            if (error) {
                spdlog::warn("cannot accept a connection: {}", error.message());
                listener.pause.expires_after(acceptPause);
                listener.pause.async_wait([this, &listener](error_code cancelled) {
                    if (!cancelled) {
                        accept(listener);
                    }
                });
                return;
            }
            open(listener, std::move(socket));
            accept(listener);
        });
    }

    void open(Listener& listener, tcp::socket socket) {
        error_code error;
        const tcp::endpoint peer = socket.remote_endpoint(error);
        if (error) {
            return; // gone already
        }
        socket.set_option(tcp::no_delay(true), error);
        if (sessions.count() >= sessions.limits.connections && !sessions.makeRoom()) {
            refuse(listener, std::move(socket));
        } else if (listener.tls) {
            startSession(sessions, TlsStream(std::move(socket), *listener.tls),
                         peer.address().to_string());
        } else {
            startSession(sessions, PlainStream(std::move(socket)), peer.address().to_string());
        }
    }

    // One connection too many: what fits into the empty send buffer.
    void refuse(const Listener& listener, tcp::socket socket) {
        spdlog::warn("refused a connection: {} are open", sessions.count());
        if (listener.tls) {
            return;
        }
        error_code ignored;
        socket.non_blocking(true, ignored);
        socket.write_some(
            asio::buffer(refusal(BadRequest(503, "", "Too many connections are open"), false)),
            ignored);
    }

    void shutDown() {
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
};

HttpServer::HttpServer(const HttpLimits& limits, HttpHandler handler, HttpAdmission admission)
    : _implementation(
          std::make_unique<Implementation>(limits, std::move(handler), std::move(admission))) {}

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
    server.signals.async_wait([&server](error_code error, int) {
        if (!error) {
            server.shutDown();
        }
    });
    server.awaitReload();
    for (Listener& listener : server.listeners) {
        server.accept(listener);
    }
    server.sessions.run();
    server.sessions.workers.join();
}

void HttpServer::stop() {
    asio::post(_implementation->sessions.io, [this] { _implementation->shutDown(); });
}

unsigned HttpServer::connections() const {
    return _implementation->sessions.count();
}

unsigned HttpServer::busyWorkers() const {
    return _implementation->sessions.workers.running();
}

} // namespace smisd
