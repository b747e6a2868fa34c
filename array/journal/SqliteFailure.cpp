#include "array/journal/SqliteFailure.h"

#include <sqlite3.h>

#include "array/ErrorCode.h"

namespace array {

namespace {

struct Row {
    int sqliteCode;
    ErrorCode code;
    const char* advice;
};

constexpr Row ROWS[] = {
    {SQLITE_FULL, ErrorCode::StateFull,
     "Nothing was changed. Make room on the file system and try again."},
    {SQLITE_IOERR_SHMSIZE, ErrorCode::StateFull,
     "Nothing was changed. Make room on the file system and try again."},
    {SQLITE_BUSY, ErrorCode::StateBusy,
     "Nothing was changed. Another process is changing the array; try again when it is done."},
    {SQLITE_CORRUPT, ErrorCode::StateDamaged, "Put a backup in its place."},
    {SQLITE_NOTADB, ErrorCode::StateDamaged, "Put a backup in its place."},
    {SQLITE_CONSTRAINT, ErrorCode::StateDamaged,
     "Nothing was changed. The content contradicts itself; put a backup in its place."},
    {SQLITE_CANTOPEN, ErrorCode::StateUnreadable, "Look at its owner, mode and file system."},
    {SQLITE_PERM, ErrorCode::StateUnreadable, "Look at its owner and mode."},
    {SQLITE_READONLY, ErrorCode::StateUnreadable,
     "Nothing was changed. The file and its directory must be writable."},
};

constexpr Row OTHER = {SQLITE_ERROR, ErrorCode::StateFailed,
                       "Nothing was changed. Look at the disk and the system's log."};

} // namespace

void failSqlite(const SQLite::Exception& failure, const std::filesystem::path& file) {
    const Row* found = &OTHER;
    for (const Row& row : ROWS)
        if (row.sqliteCode == (failure.getErrorCode() & 0xFF) ||
            row.sqliteCode == failure.getExtendedErrorCode())
            found = &row;
    fail(found->code, file.string() + ": " + failure.what() + ". " + found->advice);
}

} // namespace array
