#pragma once

#include <SQLiteCpp/Database.h>

#include "array/database/RecordStatements.h"
#include "array/model/SnapshotContents.h"

namespace array {

// Reads the array out of an open array.db. Each function must run within a transaction, so that it
// sees one version of all tables. Failures of SQLite pass as SQLite::Exception.
class SnapshotReader {
public:
    explicit SnapshotReader(SQLite::Database& database);

    // The whole array.
    Snapshot::Contents load();

    // Brings contents that were read before to the file's version; false if they have it already.
    // Costs what was changed since, or a load if that was too much or too long ago to be in the
    // log.
    bool catchUp(Snapshot::Contents& contents);

private:
    struct Header {
        std::uint64_t version = 0;
        std::uint64_t logStart = 0;
        ArrayNames names;
    };
    Header header();
    void loadGrants(Snapshot::Contents& contents);
    void loadSerials(Snapshot::Contents& contents);
    void reread(Snapshot::Contents& contents, Id id);
    void rereadGrant(Snapshot::Contents& contents, Id target, Id initiator);
    template<class Statistics>
    void rereadStatistics(Snapshot::Contents& contents, Id owner);

    SQLite::Statement _header;
    SQLite::Statement _serials;
    SQLite::Statement _changes;
    SQLite::Statement _grants;
    SQLite::Statement _isGranted;
    ForEachRecord<LoadStatement> _records;
    ForEachStatistics<LoadStatement> _statistics;
};

} // namespace array
