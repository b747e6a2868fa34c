#pragma once

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>

#include <SQLiteCpp/Database.h>

#include "array/containers/Published.h"
#include "array/database/OpenFiles.h"
#include "array/database/SnapshotReader.h"
#include "array/database/WalIndex.h"
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
    ~Follower();
    Follower(const Follower&) = delete;
    Follower& operator=(const Follower&) = delete;

    // The newest snapshot that there is, in whatever process it was made; while the files are not
    // in their place, the newest that this process has. Costs no more than a look at two words of
    // memory while no other process commits.
    SnapshotPtr newest();

    CurrentSnapshot& current() { return *_current; }
    const WalIndex& index() const { return *_index; }
    const OpenFiles& files() const { return *_files; }

    // Around a commit of this process, for the holder of the turn whose snapshot is the newest: its
    // readers need not ask the database what was committed.
    void beginCommit();
    void endCommit(SnapshotPtr made); // null: there was none

private:
    SnapshotPtr ask();
    bool isOwnCommit() const;

    const std::filesystem::path _file;
    std::mutex _asking;
    SQLite::Database _database; // guarded by _asking, as is _reader
    SnapshotReader _reader;
    std::unique_ptr<CurrentSnapshot> _current;
    std::optional<WalIndex> _index;
    std::optional<OpenFiles> _files;
    std::atomic<WalIndex::Stamp> _known{0}; // the current snapshot is as new as this, or newer

    // The number that the commit which goes on in this process has, or will have, in the index.
    static constexpr std::int64_t none = -1;
    std::atomic<std::int64_t> _ownCommit{none};
};

} // namespace array
