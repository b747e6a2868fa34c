#ifndef ARRAY_JOURNAL_STATE_READER_H
#define ARRAY_JOURNAL_STATE_READER_H

#include <SQLiteCpp/Database.h>

#include "array/journal/RecordStatements.h"
#include "array/store/State.h"

namespace array {

// Reads the array out of an open array.db. Each function must run within a transaction, so that it
// sees one version of all tables. Failures of SQLite pass as SQLite::Exception.
class StateReader {
public:
    explicit StateReader(SQLite::Database& database);

    // The whole array.
    Snapshot::State load();

    // Brings a state that was read before to the file's version; false if it has that version.
    // Costs what was changed since, or a load if that was too much or too long ago to be in the
    // log.
    bool catchUp(Snapshot::State& state);

private:
    struct Header {
        std::uint64_t version = 0;
        std::uint64_t logStart = 0;
        Names names;
    };
    Header header();
    void loadGrants(Snapshot::State& state);
    void loadSerials(Snapshot::State& state);
    void reread(Snapshot::State& state, Id id);
    void rereadGrant(Snapshot::State& state, Id target, Id initiator);
    template<class Statistics>
    void rereadStatistics(Snapshot::State& state, Id owner);

    SQLite::Statement _header;
    SQLite::Statement _serials;
    SQLite::Statement _changes;
    SQLite::Statement _grants;
    SQLite::Statement _isGranted;
    ForEachRecord<LoadStatement> _records;
    ForEachStatistics<LoadStatement> _statistics;
};

} // namespace array

#endif
