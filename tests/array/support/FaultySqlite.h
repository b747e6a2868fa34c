#pragma once

namespace array {

// What stands between the array and SQLite in tests: it lets every call through until told to let
// one fail. The linker puts it there.
class FaultySqlite {
public:
    // Lets `calls` calls succeed and the next one fail with an SQLite code without doing anything.
    static void failOnceAfter(int calls, int sqliteCode);
    static void works();

    // Whether a call has failed since failOnceAfter().
    static bool hasFailed();
};

} // namespace array
