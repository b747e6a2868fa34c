#pragma once

#include <functional>

namespace array {

// What stands between SQLite and the disk in tests: it lets everything through until told to fail.
// There is one, for all databases that are opened after install().
class FaultyDisk {
public:
    static void install();

    // The calls that may fail, by what they do.
    enum class Call {
        Write, // and truncate and flush
        Read,  // and ask for the size
        Lock,  // and share memory
        Open,  // and look for and remove files
    };

    // Lets `calls` calls of a kind succeed, and each one after them fail with an SQLite code, until
    // works() is called.
    static void failAfter(int calls, int sqliteCode, Call kind = Call::Write);

    // The same, but only one call fails.
    static void failOnceAfter(int calls, int sqliteCode, Call kind = Call::Write);

    // The same, but this process dies in the middle of the call, by SIGKILL: half of what was to be
    // written is written then.
    static void dieAfter(int calls);

    // Lets each flush of a directory by the array itself fail with an errno, until works() is
    // called. The program must be linked with --wrap=fsync.
    static void failDirectoryFlushes(int error);

    // Calls this once, in the middle of the next flush.
    static void atNextFlush(std::function<void()> act);

    static void works();

    // Whether something has failed since failAfter().
    static bool hasFailed();

    // Flushes of files since install().
    static int flushes();
};

} // namespace array
