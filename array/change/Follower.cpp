#include "array/change/Follower.h"

#include <sqlite3.h>

#include "array/database/Database.h"
#include "array/database/Failures.h"
#include "array/database/StateDirectory.h"
#include "array/database/Transaction.h"

namespace array {

Follower::Follower(const std::filesystem::path& directory)
    : _file(databaseIn(directory)), _database(openDatabase(_file)), _reader(_database) {
    {
        const Transaction read(_database, Transaction::Kind::Read);
        _current = std::make_unique<CurrentSnapshot>(SnapshotPtr::make(_reader.load()));
        _index.emplace(_database);
        _files.emplace(directory, _database);
    }
    sqlite3_db_release_memory(_database.getHandle()); // hardly a page is read again
}

Follower::~Follower() {
    _files->prepareToClose(_database);
}

SnapshotPtr Follower::newest() {
    return _index->stamp() == _known.load() || isOwnCommit() ? _current->load() : ask();
}

SnapshotPtr Follower::ask() {
    const std::lock_guard lock(_asking);
    const WalIndex::Stamp stamp = _index->stamp();
    if (stamp != _known.load() && _files->areInPlace()) {
        withSqlite(_file, [&] {
            const Transaction read(_database, Transaction::Kind::Read);
            SnapshotDraft next(*_current->load());
            if (_reader.catchUp(next.edit())) {
                _current->advance(SnapshotPtr::make(std::move(next)));
            }
        });
        _known.store(stamp);
    }
    return _current->load();
}

void Follower::beginCommit() {
    _ownCommit.store(_index->commits() + 1U);
}

void Follower::endCommit(SnapshotPtr made) {
    if (made) {
        _current->advance(std::move(made));
        if (const WalIndex::Stamp stamp = _index->stamp(); isOwnCommit()) {
            _known.store(stamp);
        }
    }
    _ownCommit.store(none);
}

// Whether the last commit of all is the one that goes on in this process. Nobody was told of it
// yet.
bool Follower::isOwnCommit() const {
    const std::int64_t own = _ownCommit.load();
    return own != none && _index->commits() == own;
}

} // namespace array
