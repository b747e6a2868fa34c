#include "array/change/Committer.h"

#include <algorithm>

#include <sqlite3.h>

#include "array/change/Fabric.h"
#include "array/database/Database.h"
#include "array/database/Failures.h"

namespace array {

namespace {

// How long clearing a secret waits for others to be done with the log; later tries do not wait.
constexpr std::chrono::milliseconds wipeTimeout{100};

} // namespace

Committer::Committer(const std::filesystem::path& database, Follower& follower, Fabric& fabric,
                     EventLog& events)
    : _file(database), _follower(follower), _fabric(fabric), _eventLog(events),
      _database(openDatabase(database)), _reader(_database), _writer(_database) {}

Committer::~Committer() {
    _follower.files().prepareToClose(_database);
}

void Committer::run(const std::function<void(Change&)>& make) {
    Request request{make, std::chrono::steady_clock::now() + turnTimeout, nullptr};
    _queue.submit(request, [this](const Batch& batch) { commitAll(batch); });
    if (request.error) {
        std::rethrow_exception(request.error);
    }
}

void Committer::commitAll(const Batch& batch) {
    const auto wipeWait = _isLogToBeWiped ? std::chrono::milliseconds{} : wipeTimeout;
    bool isCommitted = false;
    _clearsSecret = false;
    try {
        withSqlite(_file, [&] { isCommitted = tryCommit(batch); });
        for (const Event& event : _events) {
            _eventLog.publish(event);
        }
    } catch (...) {
        // Nothing of the batch was committed.
        for (Request* request : batch) {
            if (!request->error) {
                request->error = std::current_exception();
            }
        }
    }
    if (_hasFailedToCommit) {
        overwriteFailedCommit();
    }
    _isLogToBeWiped = _isLogToBeWiped || (isCommitted && _clearsSecret);
    if (_isLogToBeWiped && isCommitted && _follower.files().areInPlace()) {
        wipeLog(wipeWait);
    }
    _events.clear();
    _writer.forget();
}

// A commit of which only the flush failed stands complete in SQLite's log, and would come to life
// if this process died now. Another one, a version without changes, takes its place there. That it
// may fail to be flushed as well does no harm.
void Committer::overwriteFailedCommit() {
    _database.tryExec("UPDATE array SET version = version + 1");
    _hasFailedToCommit = false;
}

// False if there was nothing to commit.
bool Committer::tryCommit(const Batch& batch) {
    // Those that came while the first waited for the turn have waited less.
    waitUntil(batch.front()->deadline);
    Transaction turn(_database, Transaction::Kind::Write);
    SnapshotDraft next = newest();
    const Snapshot before = next;
    for (Request* request : batch) {
        attempt(*request, next);
    }
    if (!_writer.wroteSomething()) {
        return false;
    }
    ++next.edit().version;
    _writer.close(before.contents(), next.contents());
    commit(turn, std::move(next));
    return true;
}

void Committer::waitUntil(std::chrono::steady_clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    _database.setBusyTimeout(static_cast<int>(std::max(left.count(), {})));
}

// The array as it is at the begin of the turn, which another process may have had before.
SnapshotDraft Committer::newest() {
    CurrentSnapshot& current = _follower.current();
    SnapshotDraft newest(*current.load());
    if (_reader.catchUp(newest.edit())) {
        current.advance(SnapshotPtr::make(newest));
    }
    return newest;
}

// Does what one request asks for, or none of it. A failure of the database ends the whole
// batch, because SQLite may have given up the transaction.
void Committer::attempt(Request& request, SnapshotDraft& next) {
    SnapshotDraft attempted = next;
    std::vector<Event> events;
    Change change(_writer, attempted, _fabric, events);
    _writer.begin();
    try {
        request.make(change);
    } catch (...) {
        request.error = std::current_exception();
    }
    if (change._failure) {
        std::rethrow_exception(change._failure);
    }
    if (request.error) {
        _writer.undo();
        return;
    }
    _writer.keep();
    next = std::move(attempted);
    _clearsSecret = _clearsSecret || change._clearsSecret;
    _events.insert(_events.end(), events.begin(), events.end());
}

// Files that were gone before the commit are so after it too: then nobody is told that it
// succeeded.
void Committer::commit(Transaction& turn, SnapshotDraft&& next) {
    SnapshotPtr made = SnapshotPtr::make(std::move(next));
    _follower.files().requireInPlace("Nothing was changed. ");
    _follower.beginCommit();
    try {
        turn.commit();
    } catch (...) {
        _follower.endCommit({});
        _hasFailedToCommit = true;
        throw;
    }
    const bool isKept = _follower.files().areInPlace();
    _follower.endCommit(isKept ? std::move(made) : SnapshotPtr());
    if (!isKept) {
        _follower.files().requireInPlace("The change went into the files that are gone. ");
    }
}

// Whoever reads or changes the array just now may need the log; then the next change tries again.
void Committer::wipeLog(std::chrono::milliseconds wait) {
    try {
        _database.setBusyTimeout(static_cast<int>(wait.count()));
    } catch (const SQLite::Exception&) {
        return;
    }
    _isLogToBeWiped =
        sqlite3_wal_checkpoint_v2(_database.getHandle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE,
                                  nullptr, nullptr) != SQLITE_OK;
}

} // namespace array
