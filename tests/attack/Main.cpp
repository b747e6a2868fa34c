// attack: attacks a real smisd, measures what a good client notices of it, and prints a table.
//
// attack [SECONDS [PART-OF-A-NAME]]
//
// Ends with 1 when a good client was refused, or the server took more memory than it may. Times are
// printed, but fail only when they are beyond all doubt.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <vector>

#include "tests/attack/Attacks.h"
#include "tests/attack/GoodClient.h"
#include "tests/wire/support/Array.h"
#include "tests/wire/support/Smisd.h"

namespace attack {
namespace {

constexpr Seconds beyondDoubt{2.0};  // of the slowest hundredth of the good client's requests
constexpr Seconds longestLogin{5.0}; // of somebody who was never there before
constexpr unsigned short loginNet = 200;

// kB of a process, "VmRSS" or "VmHWM".
unsigned long memoryOf(pid_t pid, const std::string& kind) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(kind + ":")) {
            return std::strtoul(line.c_str() + kind.size() + 1, nullptr, 10);
        }
    }
    return 0;
}

struct Outcome {
    Seen seen;
    std::vector<Seconds> logins;
    double before = 0; // MiB of resident memory
    double most = 0;
    double after = 0;
};

std::string makeUsers(const wire::Array& array) {
    const auto login = [](const std::string& text, const char* role) {
        const std::size_t colon = text.find(':');
        return wire::Login{text.substr(0, colon), role, text.substr(colon + 1)};
    };
    std::vector<wire::Login> logins = {login(goodUser, "administrator"), login(reader, "reader")};
    for (unsigned number = 0; number < newUsers; ++number) {
        logins.push_back(login(newUser(number), "reader"));
    }
    return wire::makeUsersFile(array.file("users"), logins);
}

std::thread until(const std::atomic<bool>& stop, const std::function<void()>& step) {
    return std::thread([&stop, step] {
        while (!stop) {
            step();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    });
}

Outcome carryOut(const Attack& attack, std::chrono::seconds time, const wire::Array& array,
                 const std::string& users) {
    std::vector<std::string> options = {
        "--users", users, "--audit", array.file("audit").string(), "--log-level", "error"};
    options.insert(options.end(), attack.options.begin(), attack.options.end());
    wire::Smisd server(array.state(), options);
    const pid_t pid = server.process().pid();
    const auto mebibytes = [pid] { return static_cast<double>(memoryOf(pid, "VmRSS")) / 1024; };
    const std::string credentials = basic(goodUser);
    logIn(attack.goodSource, server.port(), credentials);

    Outcome outcome;
    outcome.before = mebibytes();
    std::atomic<bool> stop{false};
    std::atomic<bool> ended{false};
    std::thread attacker([&] { attack.run({server.port()}, stop); });
    std::thread memory = until(ended, [&] { outcome.most = std::max(outcome.most, mebibytes()); });
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    std::thread watcher(
        [&] { outcome.seen = watch(attack.goodSource, server.port(), credentials, stop); });
    unsigned number = 0;
    std::thread logins = until(stop, [&] {
        if (attack.logins && number < newUsers) {
            outcome.logins.push_back(
                logIn(loopback(loginNet, number, 1), server.port(), basic(newUser(number))));
            ++number;
        }
    });
    std::this_thread::sleep_for(time);
    stop = true;
    stop.notify_all();
    watcher.join();
    logins.join();
    attacker.join();
    for (int i = 0; i < 10; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        if (attack.left == 0 || mebibytes() < outcome.before + attack.left) {
            break;
        }
    }
    ended = true;
    memory.join();
    outcome.after = mebibytes();
    server.stop();
    return outcome;
}

std::string milliseconds(Seconds time) {
    std::string text(32, '\0');
    text.resize(static_cast<std::size_t>(
        std::snprintf(text.data(), text.size(), "%.1f", time.count() * 1000)));
    return text;
}

// A line of the table. Returns whether all is bearable.
bool print(const Attack& attack, const Outcome& outcome) {
    const Seen& seen = outcome.seen;
    const Seconds kept = quantile(seen.kept, 0.99);
    const Seconds opened = quantile(seen.opened, 0.99);
    const Seconds login = quantile(outcome.logins, 1);
    std::printf("| %s | %s / %s | %s / %s | %s | %u of %zu | %.0f, %.0f, %.0f |\n",
                attack.name.c_str(), milliseconds(quantile(seen.kept, 0.5)).c_str(),
                milliseconds(kept).c_str(), milliseconds(quantile(seen.opened, 0.5)).c_str(),
                milliseconds(opened).c_str(),
                outcome.logins.empty() ? "" : milliseconds(login).c_str(), seen.refused,
                2 * seen.kept.size(), outcome.before, outcome.most, outcome.after);
    std::fflush(stdout);
    const auto require = [&](bool good, const char* what) {
        if (!good) {
            std::fprintf(stderr, "attack: %s: %s\n", attack.name.c_str(), what);
        }
        return good;
    };
    const bool results[] = {
        require(seen.refused == 0 && seen.kept.size() > 10, "a good client was refused"),
        require(std::max(kept, opened) < beyondDoubt, "a good client waits too long"),
        require(login < longestLogin, "a first login takes too long"),
        require(outcome.most < outcome.before + attack.memory, "the server takes too much memory"),
        require(attack.left == 0 || outcome.after < outcome.before + attack.left,
                "the server keeps too much memory"),
    };
    return std::all_of(std::begin(results), std::end(results), [](bool good) { return good; });
}

bool runAll(std::chrono::seconds time, const std::string& part) {
    const wire::Array array;
    const std::string users = makeUsers(array);
    std::printf("| attack | kept connection: p50 / p99, ms | new connection: p50 / p99, ms "
                "| first login at most, ms | refused | memory before, most, after, MiB |\n"
                "|---|---|---|---|---|---|\n");
    bool good = true;
    for (const Attack& attack : attacks()) {
        if (attack.name.find(part) != std::string::npos) {
            good = print(attack, carryOut(attack, time, array, users)) && good;
        }
    }
    return good;
}

// Thousands of connections, on this side only.
void raiseOpenFiles() {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace
} // namespace attack

int main(int argc, char** argv) {
    try {
        attack::raiseOpenFiles();
        return attack::runAll(std::chrono::seconds(argc > 1 ? std::stoul(argv[1]) : 8UL),
                              argc > 2 ? argv[2] : "")
                   ? 0
                   : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "attack: %s\n", error.what());
        return 2;
    }
}
