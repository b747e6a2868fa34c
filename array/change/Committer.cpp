#include "array/change/Committer.h"

#include "array/change/Fabric.h"
#include "array/database/Database.h"
#include "array/database/Failures.h"

namespace array {

Committer::Committer(const std::filesystem::path& database, VersionCounter& counter,
                     CurrentSnapshot& current, Fabric& fabric, EventLog& events)
    : _file(database), _counter(counter), _current(current), _fabric(fabric), _eventLog(events),
      _database(openDatabase(database)), _reader(_database), _writer(_database) {}

void Committer::run(const std::function<void(Change&)>& make) {
    Request request{make, nullptr};
    _queue.submit(request, [this](const Batch& batch) { commitAll(batch); });
    if (request.error) {
        std::rethrow_exception(request.error);
    }
}

void Committer::commitAll(const Batch& batch) {
    try {
        withSqlite(_file, [&] { tryCommit(batch); });
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

void Committer::tryCommit(const Batch& batch) {
    Transaction turn(_database, Transaction::Kind::Write);
    SnapshotDraft next = newest();
    const Snapshot before = next;
    for (Request* request : batch) {
        attempt(*request, next);
    }
    if (!_writer.wroteSomething()) {
        return;
    }
    ++next.edit().version;
    _writer.close(before.contents(), next.contents());
    commit(turn, std::move(next));
}

// The array as it is at the begin of the turn, which another process may have had before.
SnapshotDraft Committer::newest() {
    SnapshotDraft newest(*_current.load());
    if (_reader.catchUp(newest.edit())) {
        _current.advance(SnapshotPtr::make(newest));
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
    _events.insert(_events.end(), events.begin(), events.end());
}

void Committer::commit(Transaction& turn, SnapshotDraft&& next) {
    const std::uint64_t version = next.version();
    const SnapshotPtr made = SnapshotPtr::make(std::move(next));
    _counter.beginCommit(version);
    try {
        turn.commit();
    } catch (...) {
        _counter.endCommit(version, false);
        _hasFailedToCommit = true;
        throw;
    }
    _current.advance(made);
    _counter.endCommit(version, true);
}

} // namespace array
