// The program smisd: serves, or makes a line of the users file.

#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <termios.h>
#include <thread>
#include <unistd.h>

#include "server/auth/Users.h"
#include "server/main/Log.h"
#include "server/main/Options.h"
#include "server/main/Serve.h"

namespace {

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

// What is typed is not shown as long as this lives.
class HiddenInput {
public:
    HiddenInput() : _isTerminal(tcgetattr(STDIN_FILENO, &_before) == 0) {
        if (_isTerminal) {
            termios hidden = _before;
            hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
            std::cerr << "Password: " << std::flush;
        }
    }
    ~HiddenInput() {
        if (_isTerminal) {
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &_before);
            std::cerr << '\n';
        }
    }
    HiddenInput(const HiddenInput&) = delete;
    HiddenInput& operator=(const HiddenInput&) = delete;

private:
    termios _before{};
    const bool _isTerminal;
};

std::string readPassword() {
    const HiddenInput hidden;
    std::string password;
    std::getline(std::cin, password);
    return password;
}

// smisd hash-password. Throws std::runtime_error for an empty password or a bad name.
void printUsersFileLine(const std::string& name, smisd::Role role) {
    const std::string password = readPassword();
    if (password.empty()) {
        throw std::runtime_error("the password on standard input is empty");
    }
    std::cout << smisd::usersFileLine(name, role, password) << '\n';
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
    smisd::startLog(parsed.options->logLevel, parsed.options->logFormat);
    try {
        if (parsed.options->hashPasswordFor.empty()) {
            smisd::serve(*parsed.options);
        } else {
            printUsersFileLine(parsed.options->hashPasswordFor, parsed.options->hashPasswordRole);
        }
    } catch (const std::exception& error) {
        std::cerr << "smisd: " << error.what() << '\n';
        return smisd::exitCannotStart;
    }
    return smisd::exitStopped;
}
