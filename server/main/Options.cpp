#include "server/main/Options.h"

#include <charconv>
#include <iostream>

#include <CLI/CLI.hpp>
#include <boost/asio/ip/address.hpp>

#include "commandline/ManualPage.h"
#include "commandline/Version.h"

namespace smisd {
namespace {

constexpr const char* defaultHttp = "127.0.0.1:5988";

// Options as they were typed, before they are checked against each other.
struct Typed {
    std::string http;
    std::string https;
    bool noAuth = false;
    bool allowRemoteHttp = false;
};

[[noreturn]] void wrongUsage(const std::string& text) {
    throw CLI::ValidationError(text);
}

void addSeconds(CLI::App& app, const std::string& name, std::chrono::seconds& seconds,
                const std::string& description) {
    app.add_option_function<unsigned>(
           name, [&seconds](unsigned count) { seconds = std::chrono::seconds(count); }, description)
        ->check(CLI::Range(1U, 86400U))
        ->default_str(std::to_string(seconds.count()))
        ->type_name("SECONDS")
        ->group("Limits");
}

void addLimits(CLI::App& app, Options& options) {
    HttpLimits& limits = options.limits;
    const auto add = [&app](const std::string& name, auto& limit, const std::string& description) {
        return app.add_option(name, limit, description)
            ->check(CLI::PositiveNumber)
            ->capture_default_str()
            ->type_name("NUMBER")
            ->group("Limits");
    };
    add("--max-connections", limits.connections, "Connections open at once");
    add("--workers", limits.workers, "Operations carried out at once");
    add("--max-header-bytes", limits.headerBytes, "Headers of one request")
        ->check(CLI::Range(std::size_t{1}, maximumHeaderBytes));
    add("--max-body-bytes", limits.bodyBytes, "Body of one request");
    add("--max-depth", limits.depth, "Of the elements in a body")
        ->check(CLI::Range(1U, greatestDepth));
    add("--max-queued-bytes", limits.queueBytes, "Of a response, kept for a slow client");
    add("--max-enumerations", options.maxEnumerations, "Open for pulling at once");
    app.add_option(
           "--memory", options.memory,
           "For what requests hold: bodies, answers on their way, open enumerations; bytes, "
           "or with a unit, as 512MiB")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(std::size_t{8} * 1024 * 1024, std::size_t{1} << 40U))
        ->default_str("256MiB")
        ->type_name("BYTES")
        ->group("Limits");
    addSeconds(app, "--request-time", limits.requestTime, "For a request to arrive");
    addSeconds(app, "--idle-time", limits.idleTime, "Between the requests of a connection");
    addSeconds(app, "--send-time", limits.sendTime, "For a client to take 64 KiB of a response");
    addSeconds(app, "--stop-time", limits.stopTime,
               "To answer the requests in progress at the end");
}

void addOptions(CLI::App& app, Options& options, Typed& typed) {
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("--state", options.state,
                   "The array's state directory (default: $DRAV_STATE_DIR, /var/lib/smisd)")
        ->type_name("DIR");
    app.add_option("--listen", typed.http,
                   "Serve HTTP there; port 0 is a free one (default: 127.0.0.1:5988)")
        ->type_name("ADDR:PORT");
    app.add_option("--tls", typed.https, "Serve HTTPS there, TLS 1.2 and later")
        ->type_name("ADDR:PORT");
    app.add_option("--cert", options.certificate, "Certificate chain for --tls, PEM")
        ->type_name("FILE");
    app.add_option("--key", options.key, "Private key for --tls, PEM")->type_name("FILE");
    app.add_option("--users", options.users,
                   "Who may log in: lines made by smisd hash-password, mode 0600")
        ->type_name("FILE");
    app.add_option("--audit", options.audit,
                   "Append changes and refusals there, a JSON object a line (default: on standard "
                   "error)")
        ->type_name("FILE");
    app.add_option_function<std::string>(
           "--audit-failures",
           [&options](const std::string& what) {
               options.auditFailures = what == "warn" ? AuditFailures::warn : AuditFailures::refuse;
           },
           "When a change cannot be written to the audit, as on a full disk: refuse it, or carry "
           "it out and warn in the log")
        ->check(CLI::IsMember({"refuse", "warn"}))
        ->default_str("refuse");
    app.add_flag("--no-auth", typed.noAuth, "Everyone may do all; on loopback addresses only");
    app.add_flag("--allow-remote-http", typed.allowRemoteHttp,
                 "Serve HTTP, which shows passwords, on other than loopback addresses too");
    app.add_option("--module", options.module,
                   "The provider module (default: the one installed with smisd)")
        ->type_name("FILE");
    app.add_option(
           "--mof", options.mof,
           "Classes and registration of the providers (default: those installed with smisd)")
        ->type_name("DIR");
    app.add_option(
           "--log-level", options.logLevel,
           "What is told on standard error. error: something is broken, see to it; warning: "
           "a client was refused or lost something; info: the server's life; debug: "
           "why requests are refused")
        ->check(CLI::IsMember({"debug", "info", "warning", "error"}))
        ->capture_default_str();
    app.add_option("--log-format", options.logFormat, "text, or a JSON object a line")
        ->check(CLI::IsMember({"text", "json"}))
        ->capture_default_str();
    addLimits(app, options);
}

ListenAddress checkedAddress(const std::string& option, const std::string& text) {
    const std::optional<ListenAddress> address = parseListenAddress(text);
    if (!address) {
        wrongUsage(option + " " + text +
                   ": expected a numeric address and a port, such as 127.0.0.1:5988 or [::1]:5989");
    }
    return *address;
}

void checkTogether(Options& options, const Typed& typed) {
    if (!typed.https.empty()) {
        options.https = checkedAddress("--tls", typed.https);
        if (options.certificate.empty() || options.key.empty()) {
            wrongUsage("--tls needs --cert FILE and --key FILE");
        }
    }
    if (!typed.http.empty() || typed.https.empty()) {
        options.http = checkedAddress("--listen", typed.http.empty() ? defaultHttp : typed.http);
    }
    if (options.http && !isLoopback(*options.http) && !typed.allowRemoteHttp) {
        wrongUsage("--listen " + toString(*options.http) +
                   " would show passwords on the network: use --tls, or add --allow-remote-http");
    }
    if (typed.noAuth && !options.users.empty()) {
        wrongUsage("--users and --no-auth exclude each other");
    }
    if (!typed.noAuth && options.users.empty()) {
        wrongUsage("say who may log in: --users FILE, or --no-auth on a loopback address");
    }
    const auto isRemote = [](const auto& address) { return address && !isLoopback(*address); };
    if (typed.noAuth && (isRemote(options.http) || isRemote(options.https))) {
        wrongUsage("--no-auth is accepted on loopback addresses only");
    }
}

constexpr commandline::ManualPage manualPage{"presents a storage array to SMI-S clients",
                                             "SIGTERM and SIGINT stop it once the requests in "
                                             "progress are answered. SIGHUP makes it read the "
                                             "certificate, the key and the users file again, and "
                                             "open the audit file again. The audit and the log "
                                             "go to standard error, a line for each entry.",
                                             exitStatuses};

} // namespace

ParsedOptions parseOptions(int argc, const char* const* argv) {
    Options options;
    options.module = besideProgram(
        {"../lib/access-providers/libAccessProviders.so", "../lib/libAccessProviders.so"});
    options.mof = besideProgram({"../share/access-providers/mof", "../../mof"});
    options.logLevel = "info";
    options.logFormat = "text";
    Typed typed;

    CLI::App app("A CIM server that presents a storage array to SMI-S clients", "smisd");
    app.set_version_flag("--version", std::string("smisd ") + commandline::version,
                         "Write the version");
    addOptions(app, options, typed);
    CLI::App* hash = app.add_subcommand(
        "hash-password", "Read a password from standard input, write a line of the users file");
    hash->add_option("NAME", options.hashPasswordFor, "The user")->required();
    hash->add_option_function<std::string>(
            "--role",
            [&options](const std::string& role) { options.hashPasswordRole = *roleNamed(role); },
            "reader: changes nothing, invokes no methods, sees no secrets")
        ->check(CLI::IsMember({"reader", "administrator"}))
        ->default_str("administrator");
    const CLI::App* man = app.add_subcommand("man", "Write the manual page");
    try {
        app.parse(argc, argv);
        if (man->parsed()) {
            commandline::writeManualPage(std::cout, app, manualPage);
            return {std::nullopt, exitStopped};
        }
        if (options.hashPasswordFor.empty()) {
            checkTogether(options, typed);
        }
    } catch (const CLI::Success& answer) { // --help, --version
        return {std::nullopt, app.exit(answer)};
    } catch (const CLI::ParseError& error) {
        std::cerr << "smisd: " << error.what() << "\nRun smisd --help for the options.\n";
        return {std::nullopt, exitWrongUsage};
    }
    return {options, exitStopped};
}

std::optional<ListenAddress> parseListenAddress(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    std::string host = text.substr(0, colon);
    const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
    if (bracketed) {
        host = host.substr(1, host.size() - 2);
    } else if (host == "localhost") {
        host = "127.0.0.1";
    }
    ListenAddress address{host, 0};
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data() + colon + 1, end, address.port);
    boost::system::error_code error;
    const auto numeric = boost::asio::ip::make_address(host, error);
    if (parsed.ec != std::errc() || parsed.ptr != end || error || numeric.is_v6() != bracketed) {
        return std::nullopt;
    }
    return address;
}

bool isLoopback(const ListenAddress& address) {
    return boost::asio::ip::make_address(address.address).is_loopback();
}

std::filesystem::path besideProgram(std::initializer_list<std::filesystem::path> relative) {
    namespace fs = std::filesystem;
    std::error_code ignored; // without /proc the paths start at the working directory
    const fs::path directory = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    for (const fs::path& path : relative) {
        if (fs::exists(directory / path, ignored)) {
            return (directory / path).lexically_normal();
        }
    }
    return (directory / *relative.begin()).lexically_normal();
}

} // namespace smisd
