#include "cli/NewState.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include "array/database/Failures.h"

namespace cli {

namespace {

// Without a slash at its end, so that a name can be added to it.
std::filesystem::path withoutSlash(const std::filesystem::path& path) {
    return path.has_filename() ? path : path.parent_path();
}

// What was renamed in a directory stays so after a loss of power.
void syncDirectory(const std::filesystem::path& directory) {
    const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = descriptor >= 0 && fsync(descriptor) == 0;
    const int error = errno;
    if (descriptor >= 0) {
        close(descriptor);
    }
    if (!synced) {
        array::failFile(directory, error);
    }
}

} // namespace

NewState::NewState(const std::filesystem::path& place)
    : _place(std::filesystem::absolute(withoutSlash(place))) {
    std::string name = _place.string() + ".new-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        array::failFile(_place, errno);
    }
    _directory = name;
}

NewState::~NewState() {
    std::error_code ignored;
    if (!_directory.empty()) {
        std::filesystem::remove_all(_directory, ignored);
    }
}

void NewState::putInPlace() {
    if (std::rename(_directory.c_str(), _place.c_str()) != 0) {
        array::failFile(_place, errno);
    }
    _directory.clear();
    syncDirectory(_place.parent_path());
}

} // namespace cli
