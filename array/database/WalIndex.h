#pragma once

#include <atomic>
#include <cstdint>

#include <SQLiteCpp/Database.h>

namespace array {

// The head of SQLite's index of array.db-wal, in memory that all processes share. It tells for the
// price of reading a word whether any process has committed something; one that hangs in the middle
// of a commit, or has died there, has changed nothing here. Its layout is fixed, because
// different versions of SQLite share it ("WAL-mode file format" of SQLite's documents).
//
// From any thread, as long as the database is open.
class WalIndex {
public:
    // Of a database that has been read. Failures of SQLite pass as SQLite::Exception.
    explicit WalIndex(SQLite::Database& database);

    // Another one after each commit that any process has completed, and now and then without one.
    using Stamp = std::uint64_t;
    Stamp stamp() const { return word<Stamp>(checksum).load(); }

    // The number of commits, which a commit makes greater by one. If a stamp was read before this
    // number, and by it no commit has come since, the stamp is that of the last one: SQLite writes
    // the second copy of the head, from which the number is, before the first.
    std::uint32_t commits() const { return word<std::uint32_t>(copySize + commitCount).load(); }

private:
    static constexpr std::size_t commitCount = 8; // offsets within the head
    static constexpr std::size_t checksum = 40;
    static constexpr std::size_t copySize = 48;

    template<class Word>
    std::atomic_ref<Word> word(std::size_t offset) const {
        return std::atomic_ref(*reinterpret_cast<Word*>(_head + offset));
    }

    char* _head;
};

} // namespace array
