#pragma once

#include <string>
#include <vector>

#include "array/change/Change.h"
#include "array/model/ErrorCode.h"

namespace array {

// A login to a target, as an initiator asks for it.
struct LoginRequest {
    Id target = 0;
    Id initiator = 0;
    std::string secret;        // what the initiator proves; must match its secret where one is set
    std::vector<Id> endpoints; // one connection through each, in this order
};

// The outcome. A refused login is a change too: it is counted.
struct LoginResult {
    Id session = 0;      // 0: refused
    ErrorCode code{};    // why it was refused
    std::string message; // likewise, for the initiator's administrator
};

// The seam to the data path, where initiators log in and read and write. It stands here because a
// change tells it; what implements it is in array/fabric/.
//
// It is told of what concerns it by the process that makes a change, inside the change, before that
// is permanent: what it does with `change` becomes permanent together with it, and an exception
// refuses it all. Its live sessions, connections and counters it keeps in the array, with
// Change::create, remove and setStatistics: that is where everybody reads them.
//
// Calls come from any thread, one at a time.
class Fabric {
public:
    virtual ~Fabric() = default;

    // An object was made, changed or removed: change.snapshot() is the array with that done.
    virtual void targetChanged(Change& change, Id target) = 0;
    virtual void unitChanged(Change& change, Id unit) = 0;
    virtual void grantChanged(Change& change, Id target, Id initiator) = 0;
    virtual void secretChanged(Change& change, Id owner) = 0;

    // Asks for a login, or for the end of a session. An id that names nothing of the class throws
    // DRAVOperationFailedException.
    virtual LoginResult login(Change& change, const LoginRequest& request) = 0;
    virtual void logout(Change& change, Id session) = 0;
};

} // namespace array
