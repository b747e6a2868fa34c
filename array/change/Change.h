#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "array/events/EventLog.h"
#include "array/model/Records.h"
#include "array/model/Snapshot.h"

namespace array {

class Fabric;
class ChangeWriter;
class SnapshotDraft;

// A change of the array in the making; see Array::change. Nobody else sees it before it is
// permanent. Used by one thread at a time.
//
// Every function throws DRAVOperationFailedException with a code of ErrorCode if a rule of the
// array is broken, and has then done nothing; the change can go on with other things.
class Change {
public:
    // The array with what this change has done so far. The reference holds as long as the change,
    // the records that it gives only until the next function that changes something.
    const Snapshot& snapshot() const;

    void setNames(const ArrayNames& names);

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

    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

private:
    friend class Committer;

    // What to write to, the snapshot to change, whom to tell, and where to leave events for the
    // time after the commit.
    Change(ChangeWriter& writer, SnapshotDraft& next, Fabric& fabric, std::vector<Event>& events);

    template<class Record>
    const Record& need(Id id) const;
    template<class Record>
    void put(Id id, const Record& record);
    template<class Record>
    void erase(Id id);
    template<class Record>
    Id make(const Record& record);
    template<class Statistics>
    void putStatistics(Id owner, const Statistics& statistics);
    template<class Work>
    void write(Work&& work);

    template<class Record>
    void checkNamed(const Record& record, Id holder) const;
    void checkLun(Id target, std::uint32_t lun, Id holder) const;
    void noteSecret(Id owner, std::string_view name, const std::string& before,
                    const std::string& now);

    void removeVolume(Id id);
    void removeInitiator(Id id);
    void removeTarget(Id id);
    void removeUnit(Id id);
    void removeEndpoint(Id id);
    void removeSession(Id id);

    ChangeWriter& _writer;
    SnapshotDraft& _next;
    Fabric& _fabric;
    std::vector<Event>& _events;
    std::exception_ptr _failure; // of the database; the whole change fails then
    bool _clearsSecret = false;
};

} // namespace array
