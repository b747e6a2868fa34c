#ifndef TESTS_ARRAY_SUPPORT_FAULTY_DISK_H
#define TESTS_ARRAY_SUPPORT_FAULTY_DISK_H

namespace array {

// What stands between SQLite and the disk in tests: it lets everything through until told to fail.
// There is one, for all databases that are opened after install().
class FaultyDisk {
public:
    static void install();

    // Lets `calls` writes, truncations and flushes succeed, and each one after them fail with an
    // SQLite code, until works() is called.
    static void failAfter(int calls, int sqliteCode);

    // The same, but only one call fails.
    static void failOnceAfter(int calls, int sqliteCode);
    static void works();

    // Whether something has failed since failAfter().
    static bool hasFailed();

    // Flushes of files since install().
    static int flushes();
};

} // namespace array

#endif
