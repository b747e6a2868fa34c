#include "tests/array/support/FaultyDisk.h"

#include <atomic>

#include <sqlite3.h>

namespace array {

namespace {

std::atomic<bool> failing{false};
std::atomic<bool> isOnce{false};
std::atomic<int> callsLeft{0};
std::atomic<int> failureCode{SQLITE_OK};
std::atomic<bool> failed{false};
std::atomic<int> flushCount{0};

// The code with which the next write or flush fails; SQLITE_OK if it shall be done.
int nextResult() {
    if (!failing || callsLeft-- > 0)
        return SQLITE_OK;
    failed = true;
    failing = !isOnce;
    return failureCode;
}

// A file as SQLite knows it; the real one stands right behind it.
struct File {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file) {
    return reinterpret_cast<File*>(file)->real();
}

template<auto Method, class... Arguments>
int pass(sqlite3_file* file, Arguments... arguments) {
    return (real(file)->pMethods->*Method)(real(file), arguments...);
}

template<auto Method, class... Arguments>
int passOrFail(sqlite3_file* file, Arguments... arguments) {
    const int result = nextResult();
    return result == SQLITE_OK ? pass<Method>(file, arguments...) : result;
}

int flush(sqlite3_file* file, int flags) {
    ++flushCount;
    return passOrFail<&sqlite3_io_methods::xSync>(file, flags);
}

void barrier(sqlite3_file* file) {
    real(file)->pMethods->xShmBarrier(real(file));
}

const sqlite3_io_methods METHODS = {
    2, // up to shared memory, without mapped pages
    pass<&sqlite3_io_methods::xClose>,
    pass<&sqlite3_io_methods::xRead, void*, int, sqlite3_int64>,
    passOrFail<&sqlite3_io_methods::xWrite, const void*, int, sqlite3_int64>,
    passOrFail<&sqlite3_io_methods::xTruncate, sqlite3_int64>,
    flush,
    pass<&sqlite3_io_methods::xFileSize, sqlite3_int64*>,
    pass<&sqlite3_io_methods::xLock, int>,
    pass<&sqlite3_io_methods::xUnlock, int>,
    pass<&sqlite3_io_methods::xCheckReservedLock, int*>,
    pass<&sqlite3_io_methods::xFileControl, int, void*>,
    pass<&sqlite3_io_methods::xSectorSize>,
    pass<&sqlite3_io_methods::xDeviceCharacteristics>,
    pass<&sqlite3_io_methods::xShmMap, int, int, int, void volatile**>,
    pass<&sqlite3_io_methods::xShmLock, int, int, int>,
    barrier,
    pass<&sqlite3_io_methods::xShmUnmap, int>,
    nullptr,
    nullptr,
};

sqlite3_vfs* disk() {
    return sqlite3_vfs_find("unix");
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int result = disk()->xOpen(disk(), name, real(file), flags, outFlags);
    file->pMethods = real(file)->pMethods ? &METHODS : nullptr;
    return result;
}

} // namespace

void FaultyDisk::install() {
    static sqlite3_vfs vfs = [] {
        sqlite3_vfs made = *disk();
        made.szOsFile += static_cast<int>(sizeof(File));
        made.zName = "faulty";
        made.xOpen = open;
        return made;
    }();
    sqlite3_vfs_register(&vfs, 1);
}

void FaultyDisk::failAfter(int calls, int sqliteCode) {
    callsLeft = calls;
    failureCode = sqliteCode;
    failed = false;
    isOnce = false;
    failing = true;
}

void FaultyDisk::failOnceAfter(int calls, int sqliteCode) {
    failAfter(calls, sqliteCode);
    isOnce = true;
}

void FaultyDisk::works() {
    failing = false;
}
bool FaultyDisk::hasFailed() {
    return failed;
}
int FaultyDisk::flushes() {
    return flushCount;
}

} // namespace array
