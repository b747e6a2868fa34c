#include "array/database/ChangeWriter.h"

namespace array {

namespace {

// A commit of more changes is not logged one by one: followers then load the array anew.
constexpr std::size_t mostLoggedChanges = 4096;

// The log keeps the changes of at least so many versions, and is trimmed every so many.
constexpr std::uint64_t loggedVersions = 1024;
constexpr std::uint64_t versionsBetweenTrims = 256;

template<class... Values>
void run(SQLite::Statement& statement, const Values&... values) {
    const Run running(statement);
    int at = 0;
    (statement.bind(++at, values), ...);
    statement.exec();
}

std::int64_t number(std::uint64_t value) {
    return static_cast<std::int64_t>(value);
}

} // namespace

ChangeWriter::ChangeWriter(SQLite::Database& database)
    : _records(prepareAll<ForEachRecord<SaveStatement>>(database)),
      _erasures(prepareAll<ForEachRecord<EraseStatement>>(database)),
      _statistics(prepareAll<ForEachStatistics<SaveStatement>>(database)),
      _grant(database, "INSERT INTO access_grant (target, initiator) VALUES (?, ?)"),
      _revoke(database, "DELETE FROM access_grant WHERE target = ? AND initiator = ?"),
      _names(database, "UPDATE array SET host = ?, system = ?"),
      _version(database, "UPDATE array SET version = ?, log_start = max(log_start, ?)"),
      _serial(database, "INSERT INTO serial (class, last) VALUES (?, ?) "
                        "ON CONFLICT (class) DO UPDATE SET last = excluded.last"),
      _log(database, "INSERT OR IGNORE INTO log (version, id, other) VALUES (?, ?, ?)"),
      _trimLog(database, "DELETE FROM log WHERE version <= ?"),
      _savepoint(database, "SAVEPOINT part"), _release(database, "RELEASE part"),
      _rollback(database, "ROLLBACK TO part") {}

void ChangeWriter::grant(Id target, Id initiator) {
    run(_grant, target, initiator);
    note(target, initiator);
}

void ChangeWriter::revoke(Id target, Id initiator) {
    run(_revoke, target, initiator);
    note(target, initiator);
}

void ChangeWriter::setNames(const ArrayNames& names) {
    run(_names, names.host, names.system);
    note(0);
}

void ChangeWriter::begin() {
    run(_savepoint);
    _kept = _changes.size();
    _keptTooMany = _tooMany;
}

void ChangeWriter::keep() {
    run(_release);
}

void ChangeWriter::undo() {
    run(_rollback);
    run(_release);
    _changes.resize(_kept);
    _tooMany = _keptTooMany;
}

void ChangeWriter::close(const Snapshot::Contents& before, const Snapshot::Contents& after) {
    forEachRecordType([&]<class Record>(std::type_identity<Record>) {
        const std::uint32_t last = after.lastSerial(classOfRecord<Record>);
        if (last != before.lastSerial(classOfRecord<Record>)) {
            run(_serial, static_cast<std::int32_t>(classOfRecord<Record>), last);
        }
    });
    writeLog(after.version);
}

void ChangeWriter::writeLog(std::uint64_t version) {
    std::uint64_t start = 0;
    if (_tooMany) {
        start = version;
    } else if (version % versionsBetweenTrims == 0 && version > loggedVersions) {
        start = version - loggedVersions;
    }
    if (start != 0) {
        run(_trimLog, number(start));
    }
    if (!_tooMany) {
        for (const auto& [id, other] : _changes) {
            run(_log, number(version), id, other);
        }
    }
    run(_version, number(version), number(start));
}

void ChangeWriter::forget() {
    _changes.clear();
    _changes.shrink_to_fit();
    _tooMany = false;
}

void ChangeWriter::note(Id id, Id other) {
    if (_changes.size() < mostLoggedChanges) {
        _changes.emplace_back(id, other);
    } else {
        _tooMany = true;
    }
}

} // namespace array
