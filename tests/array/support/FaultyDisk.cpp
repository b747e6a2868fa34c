#include "tests/array/support/FaultyDisk.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <sys/stat.h>
#include <utility>

#include <sqlite3.h>

namespace array {

namespace {

std::atomic<bool> failing{false};
std::atomic<bool> isOnce{false};
std::atomic<bool> isDeadly{false};
std::atomic<FaultyDisk::Call> failingKind{FaultyDisk::Call::Write};
std::atomic<int> callsLeft{0};
std::atomic<int> failureCode{SQLITE_OK};
std::atomic<bool> failed{false};
std::atomic<int> flushCount{0};
std::atomic<int> directoryError{0};
std::function<void()> flushAct; // of one thread

// True if this is the call that shall not succeed.
bool isStruck(FaultyDisk::Call kind) {
    if (!failing || kind != failingKind || callsLeft-- > 0) {
        return false;
    }
    failed = true;
    failing = !isOnce;
    return true;
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

template<FaultyDisk::Call Kind, auto Method, class... Arguments>
int passOrFail(sqlite3_file* file, Arguments... arguments) {
    if (!isStruck(Kind)) {
        return pass<Method>(file, arguments...);
    }
    if (isDeadly) {
        std::raise(SIGKILL);
    }
    return failureCode;
}

int write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 at) {
    if (!isStruck(FaultyDisk::Call::Write)) {
        return pass<&sqlite3_io_methods::xWrite>(file, bytes, size, at);
    }
    if (isDeadly) {
        pass<&sqlite3_io_methods::xWrite>(file, bytes, size / 2, at);
        std::raise(SIGKILL);
    }
    return failureCode;
}

int flush(sqlite3_file* file, int flags) {
    ++flushCount;
    if (const auto act = std::exchange(flushAct, nullptr)) {
        act();
    }
    return passOrFail<FaultyDisk::Call::Write, &sqlite3_io_methods::xSync>(file, flags);
}

// Taking a lock may fail; giving it back does not.
int lockShared(sqlite3_file* file, int offset, int count, int flags) {
    if ((flags & SQLITE_SHM_LOCK) != 0) {
        return passOrFail<FaultyDisk::Call::Lock, &sqlite3_io_methods::xShmLock>(file, offset,
                                                                                 count, flags);
    }
    return pass<&sqlite3_io_methods::xShmLock>(file, offset, count, flags);
}

void barrier(sqlite3_file* file) {
    real(file)->pMethods->xShmBarrier(real(file));
}

using Call = FaultyDisk::Call;

const sqlite3_io_methods methods = {
    2, // up to shared memory, without mapped pages
    pass<&sqlite3_io_methods::xClose>,
    passOrFail<Call::Read, &sqlite3_io_methods::xRead, void*, int, sqlite3_int64>,
    write,
    passOrFail<Call::Write, &sqlite3_io_methods::xTruncate, sqlite3_int64>,
    flush,
    passOrFail<Call::Read, &sqlite3_io_methods::xFileSize, sqlite3_int64*>,
    passOrFail<Call::Lock, &sqlite3_io_methods::xLock, int>,
    pass<&sqlite3_io_methods::xUnlock, int>,
    pass<&sqlite3_io_methods::xCheckReservedLock, int*>,
    pass<&sqlite3_io_methods::xFileControl, int, void*>,
    pass<&sqlite3_io_methods::xSectorSize>,
    pass<&sqlite3_io_methods::xDeviceCharacteristics>,
    passOrFail<Call::Lock, &sqlite3_io_methods::xShmMap, int, int, int, void volatile**>,
    lockShared,
    barrier,
    pass<&sqlite3_io_methods::xShmUnmap, int>,
    nullptr,
    nullptr,
};

sqlite3_vfs* disk() {
    return sqlite3_vfs_find("unix");
}

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    file->pMethods = nullptr;
    if (isStruck(Call::Open)) {
        return failureCode;
    }
    const int result = disk()->xOpen(disk(), name, real(file), flags, outFlags);
    file->pMethods = real(file)->pMethods ? &methods : nullptr;
    return result;
}

int access(sqlite3_vfs*, const char* name, int flags, int* result) {
    return isStruck(Call::Open) ? failureCode.load() : disk()->xAccess(disk(), name, flags, result);
}

int remove(sqlite3_vfs*, const char* name, int syncDirectory) {
    return isStruck(Call::Open) ? failureCode.load() : disk()->xDelete(disk(), name, syncDirectory);
}

} // namespace

void FaultyDisk::install() {
    static sqlite3_vfs vfs = [] {
        sqlite3_vfs made = *disk();
        made.szOsFile += static_cast<int>(sizeof(File));
        made.zName = "faulty";
        made.xOpen = open;
        made.xAccess = access;
        made.xDelete = remove;
        return made;
    }();
    sqlite3_vfs_register(&vfs, 1);
}

void FaultyDisk::failAfter(int calls, int sqliteCode, Call kind) {
    callsLeft = calls;
    failureCode = sqliteCode;
    failingKind = kind;
    failed = false;
    isOnce = false;
    failing = true;
}

void FaultyDisk::failOnceAfter(int calls, int sqliteCode, Call kind) {
    failAfter(calls, sqliteCode, kind);
    isOnce = true;
}

void FaultyDisk::dieAfter(int calls) {
    isDeadly = true;
    failAfter(calls, SQLITE_OK);
}

void FaultyDisk::failDirectoryFlushes(int error) {
    directoryError = error;
}

void FaultyDisk::atNextFlush(std::function<void()> act) {
    flushAct = std::move(act);
}

void FaultyDisk::works() {
    failing = false;
    directoryError = 0;
}
bool FaultyDisk::hasFailed() {
    return failed;
}
int FaultyDisk::flushes() {
    return flushCount;
}

} // namespace array

// The linker sends the array's calls of fsync here; those of SQLite go to the system.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

int __real_fsync(int);

int __wrap_fsync(int descriptor) {
    struct stat status {};
    if (array::directoryError != 0 && fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
        errno = array::directoryError;
        return -1;
    }
    return __real_fsync(descriptor);
}
}
// NOLINTEND(bugprone-reserved-identifier)
