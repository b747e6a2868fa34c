#include "array/database/Check.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include "array/database/Database.h"
#include "array/database/Failures.h"
#include "array/database/SnapshotReader.h"
#include "array/database/Transaction.h"
#include "array/model/ErrorCode.h"
#include "array/model/Rules.h"

namespace array {

namespace {

using Findings = std::vector<std::string>;

// SQLite's own look at pages and indexes: one row "ok", or one for each finding.
void checkPages(SQLite::Database& database, Findings& findings) {
    SQLite::Statement check(database, "PRAGMA integrity_check");
    while (check.executeStep()) {
        if (const std::string line = check.getColumn(0).getString(); line != "ok") {
            findings.push_back("array.db: " + line);
        }
    }
}

// Rows that refer to a row that is not there: table, row, table referred to.
void checkReferences(SQLite::Database& database, Findings& findings) {
    SQLite::Statement check(database, "PRAGMA foreign_key_check");
    while (check.executeStep()) {
        findings.push_back("array.db: row " + check.getColumn(1).getString() + " of table " +
                           check.getColumn(0).getString() + " names a " +
                           check.getColumn(2).getString() + " that is not there");
    }
}

// Ends what a database reads when its log has grown by more than a limit: a reader keeps SQLite
// from beginning the log anew.
class LogGuard {
public:
    LogGuard(SQLite::Database& database, const std::filesystem::path& file, std::uintmax_t limit)
        : _database(database), _log(file.string() + "-wal"), _limit(logSize() + limit),
          _watching([this](const std::stop_token& stopping) { watch(stopping); }) {}

    bool hasEnded() const { return _hasEnded; }

private:
    static constexpr std::chrono::milliseconds interval{20};

    void watch(const std::stop_token& stopping) {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        while (!stopping.stop_requested()) {
            if (logSize() > _limit) {
                _hasEnded = true;
                sqlite3_interrupt(_database.getHandle());
            }
            _stopped.wait_for(lock, stopping, interval, [] { return false; });
        }
    }

    std::uintmax_t logSize() const {
        std::error_code unknown;
        const std::uintmax_t size = std::filesystem::file_size(_log, unknown);
        return unknown ? 0 : size;
    }

    SQLite::Database& _database;
    const std::filesystem::path _log;
    const std::uintmax_t _limit;
    std::atomic<bool> _hasEnded{false};
    std::condition_variable_any _stopped;
    std::jthread _watching;
};

void check(SQLite::Database& database, Findings& findings) {
    const Transaction read(database, Transaction::Kind::Read);
    checkPages(database, findings);
    checkReferences(database, findings);
    if (findings.empty()) {
        findings = findBrokenRules(Snapshot(SnapshotReader(database).load()));
    }
}

} // namespace

std::vector<std::string> findDamage(const std::filesystem::path& file, std::uintmax_t logGrowth) {
    SQLite::Database database = openDatabase(file);
    Findings findings;
    withSqlite(file, [&] {
        const LogGuard guard(database, file, logGrowth);
        try {
            check(database, findings);
        } catch (const SQLite::Exception& failure) {
            if (failure.getErrorCode() != SQLITE_INTERRUPT) {
                throw;
            }
        }
        if (guard.hasEnded()) {
            fail(ErrorCode::StateBusy,
                 file.string() + ": so much is being changed that array.db-wal has grown by over " +
                     std::to_string(logGrowth) +
                     " bytes, and it cannot shrink while the array is looked at. Look for damage "
                     "when less is changed, or in a backup.");
        }
    });
    return findings;
}

} // namespace array
