#include "cli/NewState.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "array/database/Failures.h"
#include "array/database/StateDirectory.h"

namespace cli {

namespace {

// Without a slash at its end, so that a name can be added to it.
std::filesystem::path withoutSlash(const std::filesystem::path& path) {
    return path.has_filename() ? path : path.parent_path();
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
    array::syncDirectory(_place.parent_path());
}

} // namespace cli
