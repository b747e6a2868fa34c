#include "cli/NewState.h"

#include <algorithm>
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
#include "array/model/Text.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

// Its name is a dot, the name of its place, this, and six letters or digits, as mkdtemp makes them.
constexpr std::string_view mark = ".import-";
constexpr const char* unfinished = "unfinished-import"; // a file in it until it is complete

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

std::string startOfName(const fs::path& place) {
    return "." + place.filename().string() + std::string(mark);
}

bool isLeftover(const fs::path& directory, const fs::path& place) {
    const std::string name = directory.filename().string();
    const std::string start = startOfName(place);
    std::error_code ignored;
    return name.size() == start.size() + 6 && name.starts_with(start) &&
           std::all_of(name.begin() + static_cast<std::ptrdiff_t>(start.size()), name.end(),
                       [](char c) { return array::isLetter(c) || array::isDigit(c); }) &&
           fs::is_regular_file(fs::symlink_status(directory / unfinished, ignored));
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
    std::string name = (_place.parent_path() / (startOfName(_place) + "XXXXXX")).string();
    if (mkdtemp(name.data()) == nullptr) {
        array::failFile(_place, errno);
    }
    const int file = open((fs::path(name) / unfinished).c_str(),
                          O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0) {
        const int error = errno;
        rmdir(name.c_str());
        array::failFile(_place, error);
    }
    close(file);
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
    if (unlink((_directory / unfinished).c_str()) != 0 ||
        std::rename(_directory.c_str(), _place.c_str()) != 0) {
        array::failFile(_place, errno);
    }
    _directory.clear();
    array::syncDirectory(_place.parent_path());
}

void clearLeftovers(const fs::path& place, std::ostream& err) {
    const fs::path whole = fs::absolute(withoutSlash(place));
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(whole.parent_path(), unreadable)) {
        if (!isLeftover(entry.path(), whole)) {
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
