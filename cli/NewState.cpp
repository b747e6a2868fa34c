#include "cli/NewState.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <ostream>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "array/database/Failures.h"
#include "array/database/StateDirectory.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view mark = ".new-"; // and six letters or digits, as mkdtemp makes them

// Without a slash at its end, so that a name can be added to it.
fs::path withoutSlash(const fs::path& path) {
    return path.has_filename() ? path : path.parent_path();
}

// An open directory with a lock that nobody else has; -1 if it cannot be had.
int locked(const fs::path& directory) {
    const int descriptor = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status {};
    if (descriptor >= 0 && (fstat(descriptor, &status) != 0 || status.st_uid != geteuid() ||
                            status.st_nlink == 0 || flock(descriptor, LOCK_EX | LOCK_NB) != 0)) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

bool isLeftover(const std::string& name, const std::string& place) {
    const std::string start = place + std::string(mark);
    return name.size() == start.size() + 6 && name.starts_with(start);
}

} // namespace

NewState::NewState(const fs::path& place) : _place(fs::absolute(withoutSlash(place))) {
    // Who clears leftovers may have taken it for one before it was locked.
    for (int attempts = 0; !make(); ++attempts) {
        if (attempts == 100) {
            array::failFile(_place, EAGAIN);
        }
    }
}

bool NewState::make() {
    std::string name = _place.string() + std::string(mark) + "XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        array::failFile(_place, errno);
    }
    _lock = locked(name);
    if (_lock >= 0 && fs::exists(name)) {
        _directory = name;
    }
    return !_directory.empty();
}

NewState::~NewState() {
    std::error_code ignored;
    if (!_directory.empty()) {
        fs::remove_all(_directory, ignored);
    }
    close(_lock);
}

void NewState::putInPlace() {
    if (std::rename(_directory.c_str(), _place.c_str()) != 0) {
        array::failFile(_place, errno);
    }
    _directory.clear();
    array::syncDirectory(_place.parent_path());
}

void clearLeftovers(const fs::path& place, std::ostream& err) {
    const fs::path whole = fs::absolute(withoutSlash(place));
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(whole.parent_path(), unreadable)) {
        if (!isLeftover(entry.path().filename().string(), whole.filename().string())) {
            continue;
        }
        if (const int lock = locked(entry.path()); lock >= 0) {
            std::error_code failed;
            fs::remove_all(entry.path(), failed);
            close(lock);
            err << "arrayctl: " << (failed ? "could not remove " : "removed ")
                << entry.path().string() << ", left by an import that was ended\n";
        }
    }
}

} // namespace cli
