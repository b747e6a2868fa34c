#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <malloc.h>
#include <memory>
#include <thread>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include "server/main/HashPassword.h"
#include "server/main/Options.h"
#include "server/main/Serve.h"
#include "server/monitor/JsonFormatter.h"

namespace {

void startLog(const std::string& level, const std::string& format) {
    spdlog::set_default_logger(spdlog::stderr_logger_mt("smisd"));
    if (format == "json") {
        spdlog::set_formatter(std::make_unique<smisd::JsonFormatter>());
    } else {
        spdlog::set_pattern("%Y-%m-%dT%H:%M:%S.%e smisd %l: %v");
    }
    spdlog::set_level(spdlog::level::from_str(level));
}

// Each of many threads would get an arena of its own and keep in it what one answer took; no more
// of them allocate at once than there are processors. What an answer took goes back to the system,
// but for what the next one is likely to need: else a seventh of the time goes into page faults.
void tuneAllocator() {
#ifdef M_ARENA_MAX
    mallopt(M_ARENA_MAX, std::max(1, static_cast<int>(std::thread::hardware_concurrency())));
#endif
#ifdef M_TRIM_THRESHOLD
    mallopt(M_TRIM_THRESHOLD, 1 << 20);
#endif
}

} // namespace

int main(int argc, char** argv) {
    const smisd::ParsedOptions parsed = smisd::parseOptions(argc, argv);
    if (!parsed.options) {
        return parsed.exitStatus;
    }
    // The module writes to standard output, whose reader may go before the server does.
    std::signal(SIGPIPE, SIG_IGN);
    tuneAllocator();
    startLog(parsed.options->logLevel, parsed.options->logFormat);
    try {
        if (parsed.options->hashPasswordFor.empty()) {
            smisd::serve(*parsed.options);
        } else {
            smisd::printUsersFileLine(parsed.options->hashPasswordFor,
                                      parsed.options->hashPasswordRole);
        }
    } catch (const std::exception& error) {
        std::cerr << "smisd: " << error.what() << '\n';
        return smisd::exitCannotStart;
    }
    return smisd::exitStopped;
}
