#include "tests/wire/support/Smisd.h"

#include <csignal>
#include <stdexcept>

namespace wire {

std::vector<std::string> smisdCommand(const std::filesystem::path& state,
                                      const std::vector<std::string>& options) {
    std::vector<std::string> command = {SMISD,   "--state", state.string(), "--module",   MODULE,
                                        "--mof", MOF,       "--listen",     "127.0.0.1:0"};
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

std::string makeUsersFile(const std::filesystem::path& file, const std::vector<Login>& logins) {
    std::string lines;
    for (const Login& login : logins) {
        const Result line =
            run({SMISD, "hash-password", login.user, "--role", login.role}, login.password + "\n");
        if (line.status != 0) {
            throw std::runtime_error(line.err);
        }
        lines += line.out;
    }
    run({"sh", "-c", "umask 077; cat >" + file.string()}, lines);
    return file;
}

Smisd::Smisd(const std::filesystem::path& state, const std::vector<std::string>& options)
    : _process(smisdCommand(state, options)) {
    const std::string expected = "smisd: listening on http://127.0.0.1:";
    const std::string line = _process.readLine();
    if (!line.starts_with(expected)) {
        throw std::runtime_error("smisd does not start: " + line + _process.wait().err);
    }
    _port = static_cast<unsigned short>(std::stoul(line.substr(expected.size())));
}

std::string Smisd::url(const std::string& className, const std::string& credentials) const {
    return "http://" + (credentials.empty() ? "" : credentials + "@") +
           "127.0.0.1:" + std::to_string(_port) + "/root/snia:" + className;
}

Result Smisd::stop() {
    _process.signal(SIGTERM);
    return _process.wait();
}

} // namespace wire
