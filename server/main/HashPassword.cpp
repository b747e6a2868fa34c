#include "server/main/HashPassword.h"

#include <iostream>
#include <stdexcept>
#include <termios.h>
#include <unistd.h>

#include "server/auth/Users.h"

namespace smisd {
namespace {

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

} // namespace

void printUsersFileLine(const std::string& name, Role role) {
    const std::string password = readPassword();
    if (password.empty()) {
        throw std::runtime_error("the password on standard input is empty");
    }
    std::cout << usersFileLine(name, role, password) << '\n';
}

} // namespace smisd
