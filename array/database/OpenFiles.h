#pragma once

#include <array>
#include <filesystem>
#include <sys/types.h>

#include <SQLiteCpp/Database.h>

namespace array {

// The files of an array that this process has open: array.db and SQLite's two beside it. Whoever
// removes them or puts others in their place leaves the process with files that nobody will find
// again.
//
// From any thread.
class OpenFiles {
public:
    // Of a state directory whose array.db is open and was read. Failures of SQLite pass as
    // SQLite::Exception.
    OpenFiles(std::filesystem::path directory, SQLite::Database& database);

    bool areInPlace() const { return missing() == names.size(); }

    // Throws DRAVOperationFailedException with ErrorCode::StateGone unless they are in their place.
    // `outcome` is a sentence that says what that means for a change, or "".
    void requireInPlace(const char* outcome) const;

    // Before a connection is closed: if other files stand in the place of these, SQLite is not to
    // put its log into them, nor to remove them.
    void prepareToClose(SQLite::Database& database) const;

private:
    struct File {
        dev_t device = 0;
        ino_t number = 0; // 0: there is none
        bool operator==(const File&) const = default;
    };
    static constexpr std::array names = {"array.db", "array.db-wal", "array.db-shm"};

    static File fileAt(const std::filesystem::path& path);
    std::size_t missing() const; // the first that is not in its place; names.size(): none

    const std::filesystem::path _directory;
    std::array<File, names.size()> _files;
};

} // namespace array
