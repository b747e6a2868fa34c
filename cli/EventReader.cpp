#include "cli/EventReader.h"

#include <sys/stat.h>
#include <utility>

namespace cli {

namespace {

// 0 if there is no such file.
ino_t inodeOf(const std::filesystem::path& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 ? status.st_ino : 0;
}

} // namespace

EventReader::EventReader(std::filesystem::path file) : _file(std::move(file)) {}

bool EventReader::next(std::string& line) {
    if (!_text.is_open() && !openIfThere()) {
        return false;
    }
    // Asked before the end is met: what is appended in between is read first.
    const bool replaced = isReplaced();
    std::string part;
    const bool readSomething = static_cast<bool>(std::getline(_text, part));
    _partial += part;
    if (readSomething && !_text.eof()) {
        line = std::exchange(_partial, "");
        return true;
    }
    _text.clear();
    if (!replaced) {
        return false;
    }
    _text.close();
    _partial.clear();
    return next(line);
}

bool EventReader::openIfThere() {
    _inode = inodeOf(_file);
    _text.open(_file, std::ios::binary);
    if (isReplaced()) {
        _text.close(); // between the two; the next call finds the new file
    }
    return _text.is_open();
}

bool EventReader::isReplaced() const {
    const ino_t now = inodeOf(_file);
    return now != 0 && now != _inode;
}

} // namespace cli
