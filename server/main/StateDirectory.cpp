#include "server/main/StateDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace smisd {
namespace {

[[noreturn]] void fail(const std::filesystem::path& directory, int error) {
    throw std::runtime_error("cannot use the state directory " + directory.string() + ": " +
                             std::generic_category().message(error) +
                             "; name one that this user can read and write with --state");
}

} // namespace

void passStateDirectory(const std::filesystem::path& directory) {
    if (mkdir(directory.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        fail(directory, errno);
    }
    if (!std::filesystem::is_directory(directory)) {
        fail(directory, ENOTDIR);
    }
    if (access(directory.c_str(), R_OK | W_OK | X_OK) != 0) {
        fail(directory, errno);
    }
    setenv("DRAV_STATE_DIR", std::filesystem::absolute(directory).c_str(), 1);
}

} // namespace smisd
