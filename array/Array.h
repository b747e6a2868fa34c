#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "array/change/Change.h"
#include "array/change/Fabric.h"
#include "array/model/Records.h"
#include "array/model/Snapshot.h"

namespace array {

class EventLog;

// The state directory to use: the one given; if that is empty, the one named by the environment
// variable DRAV_STATE_DIR; if that is unset or empty, /var/lib/smisd.
std::filesystem::path stateDirectory(const std::string& given = {});

// An array, kept in a state directory. Any number of processes may have the same directory open;
// each sees the others' changes in the first snapshot that it takes after they were acknowledged.
//
// Every function may be called from any thread. Failures throw DRAVOperationFailedException with a
// code of ErrorCode; a change that threw has changed nothing, one that returned is on disk.
class Array {
public:
    // Opens the array in a state directory. Refused if the directory is missing, is not this user's
    // own or is open to others, or holds no array that this version reads.
    //
    // Without a fabric it has a simulated one.
    static std::unique_ptr<Array> open(const std::filesystem::path& directory,
                                       std::unique_ptr<Fabric> fabric = nullptr);

    // The same, but a missing directory is made (mode 0700), and an array in it that has no
    // objects, if there is none. The parent directory must exist.
    static std::unique_ptr<Array> openOrCreate(const std::filesystem::path& directory,
                                               std::unique_ptr<Fabric> fabric = nullptr);

    ~Array();

    const std::filesystem::path& directory() const;

    // The array as it is now. Takes no lock and never waits for a change in progress in this
    // process.
    SnapshotPtr snapshot() const;

    // One change of any size: calls `make` with the change, then makes all that it did permanent at
    // once. If `make` throws, nothing is changed and the exception goes to the caller. Changes run
    // one after the other; `make` may run on another thread that is changing the array at the same
    // time, and must not itself change the array by another way than its argument.
    void change(const std::function<void(Change&)>& make);

    // Logs an initiator in and returns the session; ends a session. Attempts and failures count in
    // the target's statistics. A login is refused without a grant, with a wrong secret where the
    // initiator has one, without endpoints, or with more than the target's maxConnections.
    Id login(const LoginRequest& request);
    void logout(Id session);

    // Where the array's events go.
    EventLog& events() const;

    // What keeps changes from being made: files that are gone, or a process that has had the
    // writer's turn for a second and commits nothing. "" if nothing. Returns within two seconds.
    std::string whyNotHealthy() const;

    // Looks for damage: of the file, and of content that breaks the rules. One line of text for
    // each finding; none if all is well.
    std::vector<std::string> check() const;

    // Copies the array into a new file while it is in use. The file must not exist; it is made with
    // mode 0600 and is an array.db that can be put into a state directory.
    void backup(const std::filesystem::path& file) const;

private:
    class Impl;
    explicit Array(std::unique_ptr<Impl> impl);

    std::unique_ptr<Impl> _impl;
};

} // namespace array
