#include "array/database/OpenFiles.h"

#include <sys/stat.h>

#include <sqlite3.h>

#include "array/model/ErrorCode.h"

namespace array {

OpenFiles::OpenFiles(std::filesystem::path directory, SQLite::Database& database)
    : _directory(std::move(directory)) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        _files[i] = fileAt(_directory / names[i]);
    }
    int hasMoved = 0;
    sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
    if (hasMoved != 0) {
        fail(ErrorCode::StateGone,
             _directory.string() + ": array.db was replaced while it was being opened. Try again.");
    }
}

void OpenFiles::requireInPlace(const char* outcome) const {
    const std::size_t i = missing();
    if (i == names.size()) {
        return;
    }
    const std::string name = names[i];
    const bool isGone = fileAt(_directory / name) == File{};
    fail(ErrorCode::StateGone,
         _directory.string() + ": " +
             (isGone ? name + ", which this program has open, is gone. "
                     : "another " + name +
                           " stands in the place of the one that this program has open. ") +
             outcome +
             "Put the files back that were there, or restart this program to use those that are "
             "there now.");
}

void OpenFiles::prepareToClose(SQLite::Database& database) const {
    for (std::size_t i = 0; i < names.size(); ++i) {
        const File there = fileAt(_directory / names[i]);
        if (!(there == File{}) && !(there == _files[i])) {
            sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        }
    }
}

std::size_t OpenFiles::missing() const {
    std::size_t i = 0;
    while (i < names.size() && fileAt(_directory / names[i]) == _files[i]) {
        ++i;
    }
    return i;
}

OpenFiles::File OpenFiles::fileAt(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? File{status.st_dev, status.st_ino} : File{};
}

} // namespace array
