#include "array/change/Follower.h"

#include <sqlite3.h>

#include "array/database/Database.h"
#include "array/database/Failures.h"
#include "array/database/StateDirectory.h"
#include "array/database/Transaction.h"

namespace array {

Follower::Follower(const std::filesystem::path& directory)
    : _file(databaseIn(directory)), _database(openDatabase(_file)), _reader(_database),
      _counter(counterIn(directory)) {
    {
        const Transaction read(_database, Transaction::Kind::Read);
        _current = std::make_unique<CurrentSnapshot>(SnapshotPtr::make(_reader.load()));
    }
    sqlite3_db_release_memory(_database.getHandle()); // hardly a page is read again
}

SnapshotPtr Follower::newest() {
    const VersionCounter::Stamp stamp = _counter.read();
    SnapshotPtr now = _current->load();
    return _counter.isNewest(stamp, now->version()) ? now : ask();
}

SnapshotPtr Follower::ask() {
    const std::lock_guard lock(_asking);
    const VersionCounter::Stamp stamp = _counter.read();
    if (!_counter.isNewest(stamp, _current->load()->version())) {
        withSqlite(_file, [&] {
            catchUp();
            if (!_counter.isNewest(stamp, _current->load()->version())) {
                heal(stamp);
            }
        });
    }
    return _current->load();
}

void Follower::catchUp() {
    const Transaction read(_database, Transaction::Kind::Read);
    readNews();
}

void Follower::readNews() {
    SnapshotDraft next(*_current->load());
    if (_reader.catchUp(next.edit())) {
        _current->advance(SnapshotPtr::make(std::move(next)));
    }
}

// The counter says that something is going on, and the database that nothing is new: a commit that
// is not done yet, or never will be. If the writer's turn is free, it is the latter.
void Follower::heal(VersionCounter::Stamp stamp) {
    _database.setBusyTimeout(0);
    try {
        const Transaction turn(_database, Transaction::Kind::Write);
        readNews();
        _counter.heal(stamp, _current->load()->version());
    } catch (const SQLite::Exception& failure) {
        if (failure.getErrorCode() != SQLITE_BUSY) {
            throw;
        }
    }
    _database.setBusyTimeout(static_cast<int>(turnTimeout.count()));
}

} // namespace array
