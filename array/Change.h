#ifndef ARRAY_CHANGE_H
#define ARRAY_CHANGE_H

#include "array/Records.h"
#include "array/Snapshot.h"

namespace array {

class Journal;

// A change of the array in the making; see Array::change. Nobody else sees it before it is
// permanent. Used by one thread at a time.
//
// Every function throws DRAVOperationFailedException with a code of ErrorCode if a rule of the
// array is broken, and has then done nothing; the change can go on with other things.
class Change {
public:
    // The array with what this change has done so far. The reference holds as long as the change,
    // the records that it gives only until the next function that changes something.
    const Snapshot& state() const;

    void setNames(const Names& names);

    // Make an object and return its id: the next serial of its class, which no object ever had.
    // A target is made together with its two settings.
    Id create(const Endpoint& endpoint);
    Id create(const Volume& volume);
    Id create(const Initiator& initiator);
    Id create(const Target& target);
    Id create(const LogicalUnit& unit);

    // A live session and its connections, as a fabric reports them: the initiator must be granted.
    // A tsih or cid of 0 is replaced by the next that is free. Nothing is counted.
    Id create(const Session& session);
    Id create(const Connection& connection);

    // Replace an object's values. A unit's target and volume, and what a session or connection
    // consists of, are fixed.
    void modify(Id id, const Volume& volume);
    void modify(Id id, const Initiator& initiator);
    void modify(Id id, const Target& target);
    void modify(Id id, const LogicalUnit& unit);
    void modify(Id id, const SessionParameters& parameters);
    void modify(Id id, const ConnectionParameters& parameters);

    // Removes an object: an endpoint without connections; a volume, whose units stay behind without
    // it; an initiator with its grants and sessions; a target without units and sessions, with its
    // grants and settings; a unit; a session with its connections; a connection.
    void remove(Id id);

    // Grant an initiator access to a target, or take it away, which ends its sessions with the
    // target. Nothing happens if it is so already.
    void grant(Id target, Id initiator);
    void revoke(Id target, Id initiator);

    // Replace the counters of an object.
    void setStatistics(Id target, const LoginStatistics& statistics);
    void setStatistics(Id target, const SessionFailures& statistics);
    void setStatistics(Id session, const SessionStatistics& statistics);
    void setStatistics(Id endpoint, const InterfaceStatistics& statistics);

    explicit Change(Journal& journal, Snapshot& next);
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

private:
    Journal& _journal;
    Snapshot& _next;
};

} // namespace array

#endif
