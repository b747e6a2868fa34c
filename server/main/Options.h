// The command line of smisd.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>

#include "commandline/ManualPage.h"
#include "server/auth/AccessControl.h"
#include "server/dispatch/ServerDispatcher.h"
#include "server/http/HttpMessage.h"
#include "server/http/HttpServer.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

struct Options {
    std::filesystem::path state; // empty: the array's own choice
    std::optional<ListenAddress> http;
    std::optional<ListenAddress> https;
    std::string certificate;
    std::string key;
    std::filesystem::path users; // empty: without authentication
    std::filesystem::path module;
    std::filesystem::path mof;
    std::string logLevel;
    std::string logFormat;
    HttpLimits limits;
    unsigned maxEnumerations = defaultMaxEnumerations;
    std::size_t memory = defaultMemory; // bytes, of all requests together
    std::filesystem::path audit;        // empty: on standard error
    AuditFailures auditFailures = AuditFailures::refuse;
    std::string hashPasswordFor; // not empty: make a line of the users file instead of serving
    Role hashPasswordRole = Role::administrator;
};

// Exit statuses
constexpr int exitStopped = 0;
constexpr int exitCannotStart = 1;
constexpr int exitWrongUsage = 2;
constexpr commandline::ExitStatus exitStatuses[] = {
    {exitStopped, "Stopped by SIGTERM or SIGINT; requests in progress were answered"},
    {exitCannotStart, "Cannot start, with one line on standard error that names the culprit"},
    {exitWrongUsage, "Wrong usage"},
};

// The options, or the exit status when there is nothing to run: help, the version or the manual
// page was asked for, or the usage is wrong; then what was to be said has been said.
struct ParsedOptions {
    std::optional<Options> options;
    int exitStatus = exitStopped;
};
ParsedOptions parseOptions(int argc, const char* const* argv);

// "127.0.0.1:5988", "[::1]:5988", "localhost:0"; nothing for another form.
std::optional<ListenAddress> parseListenAddress(const std::string& text);
bool isLoopback(const ListenAddress& address);

// The first of the paths, relative to the program's directory, that exists; else the first one. So
// an installation may stand anywhere, and a build tree serves as one.
std::filesystem::path besideProgram(std::initializer_list<std::filesystem::path> relative);

} // namespace smisd
