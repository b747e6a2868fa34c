#include "array/database/StateDirectory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "array/database/Failures.h"
#include "array/model/ErrorCode.h"

namespace array {

namespace {

constexpr mode_t accessOfOthers = S_IRWXG | S_IRWXO;

std::string octal(mode_t mode) {
    std::string digits;
    for (int shift = 9; shift >= 0; shift -= 3) {
        digits += static_cast<char>('0' + (mode >> shift & 7U));
    }
    return digits;
}

void sync(const std::filesystem::path& path, int flags) {
    const int descriptor = open(path.c_str(), flags | O_CLOEXEC);
    const int error = descriptor >= 0 && fsync(descriptor) == 0 ? 0 : errno;
    if (descriptor >= 0) {
        close(descriptor);
    }
    if (error != 0) {
        failFile(path, error);
    }
}

} // namespace

void checkStateDirectory(const std::filesystem::path& directory) {
    const std::string name = directory.string();
    struct stat status {};
    if (stat(name.c_str(), &status) != 0) {
        if (errno != ENOENT && errno != ENOTDIR) {
            failFile(directory, errno, "the state directory cannot be looked at");
        }
        fail(ErrorCode::StateMissing, name +
                                          ": there is no such state directory. Make an array "
                                          "with: arrayctl --state " +
                                          name + " import FILE");
    }
    if (!S_ISDIR(status.st_mode)) {
        fail(ErrorCode::StateUnreadable, name + ": this is no directory.");
    }
    if (status.st_uid != geteuid()) {
        fail(ErrorCode::StateNotPrivate, name + ": the state directory belongs to user " +
                                             std::to_string(status.st_uid) +
                                             ", and this process runs as user " +
                                             std::to_string(geteuid()) + ". Run it as the owner.");
    }
    if ((status.st_mode & accessOfOthers) != 0) {
        fail(ErrorCode::StateNotPrivate,
             name + ": the state directory has mode " + octal(status.st_mode & 07777) +
                 " and holds secrets, so nobody else may look into it. Close it with: chmod 700 " +
                 name);
    }
}

void makeStateDirectory(const std::filesystem::path& directory) {
    if (mkdir(directory.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        failFile(directory, errno, "the state directory cannot be made");
    }
}

void syncFile(const std::filesystem::path& file) {
    sync(file, O_RDONLY);
}

void syncDirectory(const std::filesystem::path& directory) {
    sync(directory, O_RDONLY | O_DIRECTORY);
}

} // namespace array
