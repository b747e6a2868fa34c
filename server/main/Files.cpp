#include "server/main/Files.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace smisd {

fs::path besideProgram(std::initializer_list<fs::path> relative) {
    std::error_code ignored; // without /proc the paths start at the working directory
    const fs::path directory = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    for (const fs::path& path : relative) {
        if (fs::exists(directory / path, ignored)) {
            return (directory / path).lexically_normal();
        }
    }
    return (directory / *relative.begin()).lexically_normal();
}

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
