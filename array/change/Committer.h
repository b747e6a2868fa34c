#pragma once

#include <chrono>
#include <exception>
#include <filesystem>
#include <functional>
#include <vector>

#include <SQLiteCpp/Database.h>

#include "array/change/Change.h"
#include "array/change/CommitQueue.h"
#include "array/change/Follower.h"
#include "array/database/ChangeWriter.h"
#include "array/database/SnapshotReader.h"
#include "array/database/Transaction.h"
#include "array/events/EventLog.h"

namespace array {

// Makes changes permanent, one after the other; changes that wait at the same time share a commit.
// All processes take turns through the write lock of array.db, which the system releases when
// a process dies.
class Committer {
public:
    // Failures of SQLite pass as SQLite::Exception.
    Committer(const std::filesystem::path& database, Follower& follower, Fabric& fabric,
              EventLog& events);
    ~Committer();
    Committer(const Committer&) = delete;
    Committer& operator=(const Committer&) = delete;

    // As Array::change.
    void run(const std::function<void(Change&)>& make);

private:
    struct Request {
        const std::function<void(Change&)>& make;
        std::chrono::steady_clock::time_point deadline; // for the turn
        std::exception_ptr error;
    };
    using Batch = std::vector<Request*>;

    void commitAll(const Batch& batch);
    void overwriteFailedCommit();
    bool tryCommit(const Batch& batch);
    void waitUntil(std::chrono::steady_clock::time_point deadline);
    SnapshotDraft newest();
    void attempt(Request& request, SnapshotDraft& next);
    void commit(Transaction& turn, SnapshotDraft&& next);
    void wipeLog(std::chrono::milliseconds wait);

    const std::filesystem::path _file;
    Follower& _follower;
    Fabric& _fabric;
    EventLog& _eventLog;
    CommitQueue<Request> _queue;

    // Used by one thread at a time: the one that commits a batch.
    SQLite::Database _database;
    SnapshotReader _reader;
    ChangeWriter _writer;
    std::vector<Event> _events; // to be published after the commit
    bool _hasFailedToCommit = false;
    bool _clearsSecret = false;   // the batch does
    bool _isLogToBeWiped = false; // array.db-wal has a secret that was cleared
};

} // namespace array
