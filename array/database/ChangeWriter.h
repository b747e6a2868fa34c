#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <SQLiteCpp/Database.h>

#include "array/database/RecordStatements.h"
#include "array/model/SnapshotContents.h"

namespace array {

// Writes changes of the array into an open array.db. Each function must run within a transaction,
// which close() makes ready to be committed. Failures of SQLite pass as SQLite::Exception.
class ChangeWriter {
public:
    explicit ChangeWriter(SQLite::Database& database);

    template<class Record>
    void put(Id id, const Record& record) {
        std::get<SaveStatement<Record>>(_records).run(id, record);
        note(id);
    }
    template<class Statistics>
    void putStatistics(Id owner, const Statistics& values) {
        std::get<SaveStatement<Statistics>>(_statistics).run(owner, values);
        note(owner);
    }
    template<class Record>
    void erase(Id id) {
        std::get<EraseStatement<Record>>(_erasures).run(id);
        note(id);
    }
    void grant(Id target, Id initiator);
    void revoke(Id target, Id initiator);
    void setNames(const ArrayNames& names);

    // Between begin() and keep() or undo(), one part of the transaction that may yet be undone.
    void begin();
    void keep();
    void undo();

    // True if something was written since the last close() or forget().
    bool wroteSomething() const { return !_changes.empty() || _tooMany; }

    // Notes the next version, what it changed and the serials used: the last step of a transaction.
    void close(const Snapshot::Contents& before, const Snapshot::Contents& after);

    // To be called after each transaction, committed or not.
    void forget();

private:
    void note(Id id, Id other = 0);
    void writeLog(std::uint64_t version);

    ForEachRecord<SaveStatement> _records;
    ForEachRecord<EraseStatement> _erasures;
    ForEachStatistics<SaveStatement> _statistics;
    SQLite::Statement _grant;
    SQLite::Statement _revoke;
    SQLite::Statement _names;
    SQLite::Statement _version;
    SQLite::Statement _serial;
    SQLite::Statement _log;
    SQLite::Statement _trimLog;
    SQLite::Statement _savepoint;
    SQLite::Statement _release;
    SQLite::Statement _rollback;

    std::vector<std::pair<Id, Id>> _changes; // as in the log
    bool _tooMany = false;                   // more changes than the log takes
    std::size_t _kept = 0;                   // what both were at begin()
    bool _keptTooMany = false;
};

} // namespace array
