#include "server/main/Serve.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/host_name.hpp>
#include <boost/asio/signal_set.hpp>
#include <spdlog/spdlog.h>

#include "server/auth/AccessControl.h"
#include "server/auth/Authenticator.h"
#include "server/dispatch/ServerDispatcher.h"
#include "server/http/RequestHandler.h"
#include "server/main/FreedMemory.h"
#include "server/main/StandardOutput.h"
#include "server/monitor/Metrics.h"
#include "server/monitor/MonitorPages.h"
#include "server/schema/MofReader.h"

namespace smisd {
namespace {

[[noreturn]] void failForState(const std::filesystem::path& directory, int error) {
    throw std::runtime_error("cannot use the state directory " + directory.string() + ": " +
                             std::generic_category().message(error) +
                             "; name one that this user can read and write with --state");
}

// The dispatcher loads the module when it is first needed; this finds out beforehand that it can.
void requireLoadable(const std::filesystem::path& module) {
    const std::string remedy = "; name another one with --module";
    if (!std::filesystem::exists(module)) {
        throw std::runtime_error("cannot load the module " + module.string() + ": no such file" +
                                 remedy);
    }
    if (dlopen(std::filesystem::absolute(module).c_str(), RTLD_NOW) == nullptr) {
        throw std::runtime_error(std::string("cannot load the module: ") + dlerror() + remedy);
    }
}

AuditLog openAudit(const Options& options) {
    return options.audit.empty() ? AuditLog() : AuditLog(options.audit);
}

void tell(AuditLog& audit, Metrics& metrics, const FailedLogin& login) {
    metrics.loginFailed();
    spdlog::warn("{}: refused: {}", login.address, login.reason);
    AuditRecord record;
    record.event = "login";
    record.user = login.user;
    record.address = login.address;
    record.outcome = login.reason;
    audit.writeSummed(record);
}

std::unique_ptr<BasicAuthenticator> openAuthenticator(const Options& options, AuditLog& audit,
                                                      Metrics& metrics) {
    if (options.users.empty()) {
        spdlog::warn("authentication is off: whoever reaches this server may change the array");
        return nullptr;
    }
    return std::make_unique<BasicAuthenticator>(
        readUsersFile(options.users),
        [&](const FailedLogin& login) { tell(audit, metrics, login); });
}

// On SIGHUP. What is bad changes nothing.
void reload(const Options& options, AuditLog& audit, BasicAuthenticator* authenticator) {
    try {
        audit.reopen();
    } catch (const std::exception& error) {
        spdlog::error("the audit file in use stays: {}", error.what());
    }
    if (authenticator == nullptr) {
        return;
    }
    try {
        Users users = readUsersFile(options.users);
        spdlog::info("users: {}, of {}", users.size(), options.users.string());
        authenticator->replaceUsers(std::move(users));
    } catch (const std::exception& error) {
        spdlog::error("the users in use stay: {}", error.what());
    }
}

// Opens the listeners and returns their URLs, as "http://127.0.0.1:5988 https://[::1]:5989".
std::string listenOn(const Options& options, HttpServer& server) {
    std::string urls;
    try {
        if (options.http) {
            const unsigned short port = server.listen(*options.http);
            urls += " http://" + toString(ListenAddress{options.http->address, port});
        }
        if (options.https) {
            const unsigned short port =
                server.listenTls(*options.https, options.certificate, options.key);
            urls += " https://" + toString(ListenAddress{options.https->address, port});
        }
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string(error.what()) +
                                 "; choose others with --listen, --tls, --cert and --key");
    }
    return urls;
}

Gauges gaugesOf(const HttpServer& server, const Options& options,
                const BasicAuthenticator* authenticator, const ServerDispatcher& dispatcher,
                const StandardOutput& output, const AuditLog& audit, const MemoryBudget& memory) {
    return {server.connections(),
            options.limits.workers,
            server.busyWorkers(),
            dispatcher.openEnumerations(),
            output.dropped(),
            audit.lost(),
            authenticator != nullptr ? authenticator->waiting() : 0,
            server.refusedConnections(),
            memory.limit(),
            memory.used(),
            memory.refusals()};
}

// The module's database and the log need some too.
void raiseOpenFiles(unsigned connections) {
    constexpr rlim_t others = 128;
    const rlim_t needed = connections + others;
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= needed) {
        return;
    }
    const rlim_t before = limit.rlim_cur;
    limit.rlim_cur = std::min(limit.rlim_max, needed);
    if (limit.rlim_cur <= before || setrlimit(RLIMIT_NOFILE, &limit) != 0) {
        limit.rlim_cur = before;
    }
    if (limit.rlim_cur < needed) {
        spdlog::warn("at most {} files may be open, --max-connections {} needs {}: raise the limit "
                     "(ulimit -n, LimitNOFILE= of systemd) or lower the option",
                     limit.rlim_cur, connections, needed);
    }
}

// While the server is taken down its own signal handlers go, and a second signal would end the
// process.
void heedNoMoreSignals() {
    static boost::asio::io_context nobody;
    static boost::asio::signal_set signals(nobody, SIGTERM, SIGINT);
}

} // namespace

void serve(const Options& options) {
    if (!options.state.empty()) {
        passStateDirectory(options.state);
    }
    raiseOpenFiles(options.limits.connections);
    FreedMemory freed;
    HttpLimits limits = options.limits;
    limits.memory =
        std::make_shared<MemoryBudget>(options.memory, [&freed] { freed.giveToSystem(); });
    const StandardOutput output; // the module writes lines to it
    AuditLog audit = openAudit(options);
    Metrics metrics;
    const std::unique_ptr<BasicAuthenticator> authenticator =
        openAuthenticator(options, audit, metrics);
    Repository repository;
    readMofDirectory(options.mof, repository);
    requireLoadable(options.module);
    const std::string hostName = boost::asio::ip::host_name();
    ServerDispatcher dispatcher(repository, std::filesystem::absolute(options.module),
                                Pegasus::String(hostName.c_str()), options.maxEnumerations,
                                limits.memory);
    GuardedDispatcher guarded(dispatcher, repository, audit, options.auditFailures);
    MeasuredDispatcher measured(guarded, metrics);
    RequestHandler handler(measured, authenticator.get(), hostName, limits);
    HttpServer* running = nullptr;
    const MonitorPages monitor(
        [&] {
            return metrics.text(gaugesOf(*running, options, authenticator.get(), dispatcher, output,
                                         audit, *limits.memory));
        },
        [&] {
            const std::string unreadable = whyNotHealthy(dispatcher);
            return unreadable.empty() ? problemOfEngine(std::filesystem::absolute(options.module))
                                      : unreadable;
        });
    HttpServer server(limits, [&](HttpRequest head, Decide decide) {
        if (MonitorPages::serves(head)) {
            decide(monitor.admit(head));
        } else {
            handler.admit(std::move(head), std::move(decide));
        }
    });
    running = &server;
    server.onReload([&] { reload(options, audit, authenticator.get()); });
    const std::string urls = listenOn(options, server);
    std::optional<PasswordThread> passwords; // after the server, whose clients wait for it
    if (authenticator) {
        passwords.emplace(*authenticator);
    }
    std::cout << "smisd: listening on" << urls << std::endl;
    server.run();
    heedNoMoreSignals();
    spdlog::info("stopped");
}

void passStateDirectory(const std::filesystem::path& directory) {
    if (mkdir(directory.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        failForState(directory, errno);
    }
    if (!std::filesystem::is_directory(directory)) {
        failForState(directory, ENOTDIR);
    }
    if (access(directory.c_str(), R_OK | W_OK | X_OK) != 0) {
        failForState(directory, errno);
    }
    setenv("DRAV_STATE_DIR", std::filesystem::absolute(directory).c_str(), 1);
}

} // namespace smisd
