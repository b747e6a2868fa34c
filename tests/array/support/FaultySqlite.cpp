#include "tests/array/support/FaultySqlite.h"

#include <atomic>

#include <sqlite3.h>

namespace {

std::atomic<bool> failing{false};
std::atomic<bool> failed{false};
std::atomic<int> callsLeft{0};
std::atomic<int> failureCode{SQLITE_OK};

template<class... Arguments>
int passOrFail(int (*real)(Arguments...), Arguments... arguments) {
    if (!failing || callsLeft-- > 0) {
        return real(arguments...);
    }
    failing = false;
    failed = true;
    return failureCode;
}

} // namespace

// The linker sends each call of sqlite3_x to __wrap_sqlite3_x, and of __real_sqlite3_x to SQLite.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

using Callback = int (*)(void*, int, char**, char**);
using Destroy = void (*)(void*);

int __real_sqlite3_open_v2(const char*, sqlite3**, int, const char*);
int __real_sqlite3_busy_timeout(sqlite3*, int);
int __real_sqlite3_exec(sqlite3*, const char*, Callback, void*, char**);
int __real_sqlite3_prepare_v2(sqlite3*, const char*, int, sqlite3_stmt**, const char**);
int __real_sqlite3_step(sqlite3_stmt*);
int __real_sqlite3_bind_int(sqlite3_stmt*, int, int);
int __real_sqlite3_bind_int64(sqlite3_stmt*, int, sqlite3_int64);
int __real_sqlite3_bind_text(sqlite3_stmt*, int, const char*, int, Destroy);
int __real_sqlite3_bind_null(sqlite3_stmt*, int);
int __real_sqlite3_backup_step(sqlite3_backup*, int);

int __wrap_sqlite3_open_v2(const char* name, sqlite3** database, int flags, const char* vfs) {
    *database = nullptr;
    return passOrFail(__real_sqlite3_open_v2, name, database, flags, vfs);
}
int __wrap_sqlite3_busy_timeout(sqlite3* database, int milliseconds) {
    return passOrFail(__real_sqlite3_busy_timeout, database, milliseconds);
}
int __wrap_sqlite3_exec(sqlite3* database, const char* sql, Callback callback, void* argument,
                        char** message) {
    return passOrFail(__real_sqlite3_exec, database, sql, callback, argument, message);
}
int __wrap_sqlite3_prepare_v2(sqlite3* database, const char* sql, int size,
                              sqlite3_stmt** statement, const char** rest) {
    *statement = nullptr;
    return passOrFail(__real_sqlite3_prepare_v2, database, sql, size, statement, rest);
}
int __wrap_sqlite3_step(sqlite3_stmt* statement) {
    return passOrFail(__real_sqlite3_step, statement);
}
int __wrap_sqlite3_bind_int(sqlite3_stmt* statement, int at, int value) {
    return passOrFail(__real_sqlite3_bind_int, statement, at, value);
}
int __wrap_sqlite3_bind_int64(sqlite3_stmt* statement, int at, sqlite3_int64 value) {
    return passOrFail(__real_sqlite3_bind_int64, statement, at, value);
}
int __wrap_sqlite3_bind_text(sqlite3_stmt* statement, int at, const char* text, int size,
                             Destroy destroy) {
    return passOrFail(__real_sqlite3_bind_text, statement, at, text, size, destroy);
}
int __wrap_sqlite3_bind_null(sqlite3_stmt* statement, int at) {
    return passOrFail(__real_sqlite3_bind_null, statement, at);
}
int __wrap_sqlite3_backup_step(sqlite3_backup* backup, int pages) {
    return passOrFail(__real_sqlite3_backup_step, backup, pages);
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

namespace array {

void FaultySqlite::failOnceAfter(int calls, int sqliteCode) {
    callsLeft = calls;
    failureCode = sqliteCode;
    failed = false;
    failing = true;
}

void FaultySqlite::works() {
    failing = false;
}

bool FaultySqlite::hasFailed() {
    return failed;
}

} // namespace array
