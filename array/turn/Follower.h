#ifndef ARRAY_TURN_FOLLOWER_H
#define ARRAY_TURN_FOLLOWER_H

#include <filesystem>
#include <memory>
#include <mutex>

#include <SQLiteCpp/Database.h>

#include "array/journal/StateReader.h"
#include "array/state/VersionCounter.h"
#include "array/turn/CurrentSnapshot.h"

namespace array {

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
    StateReader _reader;
    VersionCounter _counter;
    std::unique_ptr<CurrentSnapshot> _current;
};

} // namespace array

#endif
