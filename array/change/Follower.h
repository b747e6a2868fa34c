#pragma once

#include <filesystem>
#include <memory>
#include <mutex>

#include <SQLiteCpp/Database.h>

#include "array/containers/Published.h"
#include "array/database/SnapshotReader.h"
#include "array/database/VersionCounter.h"
#include "array/model/Snapshot.h"

namespace array {

// The newest snapshot that this process has. It comes from the changes of this process or from
// following those of others, which may arrive at the same version; a newer one is never replaced by
// an older one.
class CurrentSnapshot {
public:
    explicit CurrentSnapshot(SnapshotPtr first) : _published(std::move(first)) {}

    SnapshotPtr load() const { return _published.load(); }

    void advance(SnapshotPtr next) {
        const std::lock_guard lock(_advancing);
        if (next->version() > _published.load()->version()) {
            _published.store(std::move(next));
        }
    }

private:
    Published<Snapshot> _published;
    std::mutex _advancing;
};

// Brings this process's snapshot up to what other processes have committed.
class Follower {
public:
    // Opens the files of a state directory and reads the array. Failures of SQLite pass as
    // SQLite::Exception.
    explicit Follower(const std::filesystem::path& directory);

    // The newest snapshot that there is, in whatever process it was made. Costs no more than a look
    // at two words of memory while no other process commits.
    SnapshotPtr newest();

    CurrentSnapshot& current() { return *_current; }
    VersionCounter& counter() { return _counter; }

private:
    SnapshotPtr ask();
    void catchUp();
    void readNews();
    void heal(VersionCounter::Stamp stamp);

    const std::filesystem::path _file;
    std::mutex _asking;
    SQLite::Database _database; // guarded by _asking, as is _reader
    SnapshotReader _reader;
    VersionCounter _counter;
    std::unique_ptr<CurrentSnapshot> _current;
};

} // namespace array
