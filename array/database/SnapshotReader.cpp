#include "array/database/SnapshotReader.h"

namespace array {

namespace {

using Contents = Snapshot::Contents;

// Ids of another class, or without a serial, would not be found again.
template<class Record>
void checkId(Id id) {
    if (classOf(id) != classOfRecord<Record> || serialOf(id) == 0) {
        fail(ErrorCode::StateDamaged, std::string("array.db, table ") + Layout<Record>::table +
                                          ": the id " + keyText(id) +
                                          " is of another class. Put a backup in its place.");
    }
}

Id idIn(const SQLite::Column& column) {
    return static_cast<Id>(column.getInt64());
}

} // namespace

SnapshotReader::SnapshotReader(SQLite::Database& database)
    : _header(database, "SELECT version, log_start, host, system FROM array"),
      _serials(database, "SELECT class, last FROM serial"),
      _changes(database, "SELECT DISTINCT id, other FROM log WHERE version > ?"),
      _grants(database, "SELECT target, initiator FROM access_grant ORDER BY target, initiator"),
      _isGranted(database, "SELECT 1 FROM access_grant WHERE target = ? AND initiator = ?"),
      _records(prepareAll<ForEachRecord<LoadStatement>>(database)),
      _statistics(prepareAll<ForEachStatistics<LoadStatement>>(database)) {}

SnapshotReader::Header SnapshotReader::header() {
    const Run run(_header);
    Header header;
    if (!_header.executeStep()) {
        fail(ErrorCode::StateDamaged, "array.db, table array: the row of the array is missing. "
                                      "Put a backup in its place.");
    }
    header.version = static_cast<std::uint64_t>(_header.getColumn(0).getInt64());
    header.logStart = static_cast<std::uint64_t>(_header.getColumn(1).getInt64());
    header.names = ArrayNames{_header.getColumn(2).getString(), _header.getColumn(3).getString()};
    return header;
}

Contents SnapshotReader::load() {
    const Header now = header();
    Contents contents;
    contents.version = now.version;
    contents.names = Shared<ArrayNames>::make(now.names);

    forEachRecordType([&]<class Record>(std::type_identity<Record>) {
        std::get<LoadStatement<Record>>(_records).all([&](Id id, Record&& record) {
            checkId<Record>(id);
            contents.put(id, std::move(record));
        });
    });
    forEachStatisticsType([&]<class Statistics>(std::type_identity<Statistics>) {
        std::get<LoadStatement<Statistics>>(_statistics).all([&](Id id, Statistics&& values) {
            contents.putStatistics(id, std::move(values));
        });
    });
    loadGrants(contents);
    loadSerials(contents);
    return contents;
}

void SnapshotReader::loadGrants(Contents& contents) {
    const Run run(_grants);
    while (_grants.executeStep()) {
        contents.grant(idIn(_grants.getColumn(0)), idIn(_grants.getColumn(1)));
    }
}

void SnapshotReader::loadSerials(Contents& contents) {
    const Run run(_serials);
    while (_serials.executeStep()) {
        contents.serialUsed(makeId(static_cast<CLASSID_e>(_serials.getColumn(0).getInt()),
                                   idIn(_serials.getColumn(1))));
    }
}

bool SnapshotReader::catchUp(Contents& contents) {
    const Header now = header();
    if (now.version == contents.version) {
        return false;
    }
    if (contents.version > now.version) {
        fail(ErrorCode::StateDamaged, "array.db was replaced by an older one while it was in use. "
                                      "Stop all programs that use it and start them again.");
    }
    if (contents.version < now.logStart) {
        contents = load();
        return true;
    }
    const Run run(_changes);
    _changes.bind(1, static_cast<std::int64_t>(contents.version));
    while (_changes.executeStep()) {
        const Id id = idIn(_changes.getColumn(0));
        const Id other = idIn(_changes.getColumn(1));
        if (id == 0) {
            contents.names = Shared<ArrayNames>::make(now.names);
        } else if (other != 0) {
            rereadGrant(contents, id, other);
        } else {
            reread(contents, id);
        }
    }
    contents.version = now.version;
    return true;
}

void SnapshotReader::reread(Contents& contents, Id id) {
    forRecordTypeOf(classOf(id), [&]<class Record>(std::type_identity<Record>) {
        Record record{};
        if (std::get<LoadStatement<Record>>(_records).one(id, record)) {
            contents.put(id, std::move(record));
        } else {
            contents.erase<Record>(id);
        }
    });
    forEachStatisticsType([&]<class Statistics>(std::type_identity<Statistics>) {
        if (ownerOfStatistics<Statistics> == classOf(id)) {
            rereadStatistics<Statistics>(contents, id);
        }
    });
}

template<class Statistics>
void SnapshotReader::rereadStatistics(Contents& contents, Id owner) {
    Statistics values{};
    if (std::get<LoadStatement<Statistics>>(_statistics).one(owner, values)) {
        contents.putStatistics(owner, std::move(values));
    }
}

void SnapshotReader::rereadGrant(Contents& contents, Id target, Id initiator) {
    const Run run(_isGranted);
    _isGranted.bind(1, target);
    _isGranted.bind(2, initiator);
    if (_isGranted.executeStep()) {
        contents.grant(target, initiator);
    } else {
        contents.revoke(target, initiator);
    }
}

} // namespace array
