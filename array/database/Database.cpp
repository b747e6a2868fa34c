#include "array/database/Database.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include "array/database/Failures.h"
#include "array/database/Schema.h"
#include "array/database/StateDirectory.h"
#include "array/model/ErrorCode.h"

namespace array {

namespace {

namespace fs = std::filesystem;

// Makes an empty file that only this user can read. SQLite takes it for a new database.
void makeFile(const fs::path& file) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        failFile(file, errno);
    }
    close(descriptor);
}

// Likewise, with a name of its own, under which it goes away again.
class Draft {
public:
    explicit Draft(const fs::path& file) {
        std::string name = file.string() + ".new-XXXXXX";
        const int descriptor = mkstemp(name.data());
        if (descriptor < 0) {
            failFile(file, errno);
        }
        close(descriptor);
        _path = name;
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft() {
        std::error_code ignored;
        for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
            fs::remove(_path.string() + suffix, ignored);
        }
    }

    const fs::path& path() const { return _path; }

private:
    fs::path _path;
};

void checkFile(const fs::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        if (errno != ENOENT) {
            failFile(file, errno);
        }
        fail(ErrorCode::StateMissing, file.string() +
                                          ": there is no array in this state "
                                          "directory. Make one with: arrayctl --state " +
                                          file.parent_path().string() + " import FILE");
    }
    if (access(file.c_str(), R_OK | W_OK) != 0) {
        failFile(file, errno);
    }
    if (status.st_size == 0) {
        fail(ErrorCode::StateDamaged,
             file.string() + ": the file is empty. Put a backup in its place.");
    }
}

int pragma(SQLite::Database& database, const char* query) {
    return database.execAndGet(query).getInt();
}

void checkKind(SQLite::Database& database, const fs::path& file) {
    if (pragma(database, "PRAGMA application_id") != applicationId) {
        fail(ErrorCode::StateForeign, file.string() +
                                          ": this database was made by another program. "
                                          "Put the array's own file in its place.");
    }
    const int version = schemaVersionOf(database);
    if (version < 1 || version > schemaVersion) {
        fail(version > schemaVersion ? ErrorCode::StateNewer : ErrorCode::StateDamaged,
             file.string() + ": the array is kept in format " + std::to_string(version) +
                 ", and this program reads format " + std::to_string(schemaVersion) +
                 ". Use the program that made it, or put a backup in its place.");
    }
}

void setUp(SQLite::Database& database, const fs::path& file) {
    database.exec("PRAGMA foreign_keys = ON");
    database.exec("PRAGMA synchronous = FULL");
    if (database.execAndGet("PRAGMA journal_mode = WAL").getString() != "wal") {
        fail(ErrorCode::StateFailed, file.string() +
                                         ": the file system cannot share memory between "
                                         "processes. Use a local one.");
    }
    database.exec("PRAGMA secure_delete = ON"); // of secrets
    // What a savepoint needs to go back, which is little, stays off the disk.
    database.exec("PRAGMA temp_store = MEMORY");
    // A large change leaves a large log behind; it need not stay so.
    database.exec("PRAGMA journal_size_limit = 16777216");
}

} // namespace

SQLite::Database openDatabase(const fs::path& file) {
    checkFile(file);
    return withSqlite(file, [&] {
        SQLite::Database database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX,
                                  static_cast<int>(turnTimeout.count()));
        checkKind(database, file);
        setUp(database, file);
        migrateSchema(database);
        return database;
    });
}

void createDatabase(const fs::path& file, const ArrayNames& names) {
    std::error_code ignored;
    if (fs::exists(file, ignored)) {
        return;
    }
    const Draft draft(file);
    withSqlite(file, [&] {
        SQLite::Database database(draft.path().string(), SQLite::OPEN_READWRITE);
        createSchema(database, names);
        database.exec("PRAGMA journal_mode = WAL");
    });
    // A hard link, because a rename would replace an array that another process made meanwhile.
    if (link(draft.path().c_str(), file.c_str()) != 0 && errno != EEXIST) {
        failFile(file, errno);
    }
    syncDirectory(file.parent_path());
}

void copyDatabase(const fs::path& from, const fs::path& to) {
    makeFile(to);
    try {
        SQLite::Database source = openDatabase(from);
        withSqlite(to, [&] {
            SQLite::Database copy(to.string(), SQLite::OPEN_READWRITE);
            SQLite::Backup backup(copy, source);
            if (const int result = backup.executeStep(); result != SQLITE_DONE) {
                throw SQLite::Exception("the copy is not complete", result);
            }
        });
        syncFile(to);
        syncDirectory(to.has_parent_path() ? to.parent_path() : ".");
    } catch (...) {
        std::error_code ignored;
        fs::remove(to, ignored);
        throw;
    }
}

} // namespace array
