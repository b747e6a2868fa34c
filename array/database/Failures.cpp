#include "array/database/Failures.h"

#include <cerrno>
#include <cstring>

#include <sqlite3.h>

#include "array/database/Turn.h"
#include "array/model/ErrorCode.h"

namespace array {

namespace {

struct Row {
    int error;
    ErrorCode code;
    const char* advice;
};

constexpr Row systemErrors[] = {
    {EACCES, ErrorCode::StateUnreadable, " Look at its owner and mode."},
    {EEXIST, ErrorCode::StateExists, ""},
    {ENOSPC, ErrorCode::StateFull, " Make room on the file system and try again."},
    {EIO, ErrorCode::StateFailed, " Look at the disk and the system's log."},
    {EROFS, ErrorCode::StateUnreadable, " An array needs one that can be written."},
    {EDQUOT, ErrorCode::StateFull, " Make room on the file system and try again."},
};

constexpr Row otherSystemError = {0, ErrorCode::StateUnreadable, ""};

constexpr Row sqliteErrors[] = {
    {SQLITE_FULL, ErrorCode::StateFull,
     "Nothing was changed. Make room on the file system and try again."},
    {SQLITE_IOERR_SHMSIZE, ErrorCode::StateFull,
     "Nothing was changed. Make room on the file system and try again."},
    {SQLITE_BUSY, ErrorCode::StateBusy, "Nothing was changed. "},
    {SQLITE_CORRUPT, ErrorCode::StateDamaged, "Put a backup in its place."},
    {SQLITE_NOTADB, ErrorCode::StateDamaged, "Put a backup in its place."},
    {SQLITE_CONSTRAINT, ErrorCode::StateDamaged,
     "Nothing was changed. The content contradicts itself; put a backup in its place."},
    {SQLITE_CANTOPEN, ErrorCode::StateUnreadable, "Look at its owner, mode and file system."},
    {SQLITE_PERM, ErrorCode::StateUnreadable, "Look at its owner and mode."},
    {SQLITE_READONLY, ErrorCode::StateUnreadable,
     "Nothing was changed. The file and its directory must be writable."},
};

constexpr Row otherSqliteError = {SQLITE_ERROR, ErrorCode::StateFailed,
                                  "Nothing was changed. Look at the disk and the system's log."};

std::string adviceWhileBusy(const std::filesystem::path& database) {
    return "The array is being changed by " + turnHolder(database).value_or("another process") +
           "; try again when it is done, or end it if it hangs.";
}

} // namespace

void failFile(const std::filesystem::path& path, int error, const char* what) {
    const Row* found = &otherSystemError;
    for (const Row& row : systemErrors) {
        if (row.error == error) {
            found = &row;
        }
    }
    fail(found->code, path.string() + ": " + what + (*what ? ": " : "") + std::strerror(error) +
                          '.' + found->advice);
}

void failSqlite(const SQLite::Exception& failure, const std::filesystem::path& file) {
    const Row* found = &otherSqliteError;
    for (const Row& row : sqliteErrors) {
        if (row.error == (failure.getErrorCode() & 0xFF) ||
            row.error == failure.getExtendedErrorCode()) {
            found = &row;
        }
    }
    fail(found->code, file.string() + ": " + failure.what() + ". " + found->advice +
                          (found->code == ErrorCode::StateBusy ? adviceWhileBusy(file) : ""));
}

} // namespace array
