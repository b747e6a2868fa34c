// The program smisd: serves, or makes a line of the users file.

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <exception>
#include <iostream>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <termios.h>
#include <thread>
#include <unistd.h>

#include "commandline/CoreFiles.h"
#include "server/auth/Users.h"
#include "server/auth/Wiping.h"
#include "server/main/Log.h"
#include "server/main/Options.h"
#include "server/main/Serve.h"
#include "server/operation/Printable.h"

namespace {

constexpr std::size_t longestPassword = 4096;

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

// The first line of standard input. Not by way of std::cin, whose buffer nobody wipes.
void readPassword(std::string& password) {
    const HiddenInput hidden;
    password.reserve(longestPassword);
    for (char next = 0; read(STDIN_FILENO, &next, 1) == 1 && next != '\n';) {
        if (password.size() == longestPassword) {
            throw std::runtime_error("the password on standard input is too long");
        }
        password += next;
    }
}

// smisd hash-password. Throws std::runtime_error for an empty password or a bad name.
void printUsersFileLine(const std::string& name, smisd::Role role) {
    smisd::WipedText password;
    readPassword(password.text);
    if (password.text.empty()) {
        throw std::runtime_error("the password on standard input is empty");
    }
    std::cout << smisd::usersFileLine(name, role, password.text) << '\n';
}

} // namespace

int main(int argc, char** argv) {
    const smisd::ParsedOptions parsed = smisd::parseOptions(argc, argv);
    if (!parsed.options) {
        return parsed.exitStatus;
    }
    commandline::leaveNoCoreFiles();
    // The module writes to standard output, whose reader may go before the server does; a file that
    // may not grow any more is an error of who writes to it.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    tuneAllocator();
    smisd::startLog(parsed.options->logLevel, parsed.options->logFormat);
    int status = smisd::exitStopped;
    try {
        if (parsed.options->hashPasswordFor.empty()) {
            smisd::serve(*parsed.options);
        } else {
            printUsersFileLine(parsed.options->hashPasswordFor, parsed.options->hashPasswordRole);
        }
    } catch (const std::exception& error) {
        std::cerr << "smisd: " << smisd::printable(error.what()) << '\n';
        status = smisd::exitCannotStart;
    }
    smisd::endLog();
    return status;
}
