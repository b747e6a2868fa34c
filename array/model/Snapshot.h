#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "array/containers/Shared.h"
#include "array/model/Records.h"

namespace array {

// The whole array at one moment. It never changes, so it is read by any number of threads without a
// lock; what its functions return by pointer or reference lives as long as the snapshot. No
// function throws, unless memory runs out. Each costs the same in a small array and in one of a
// million objects, per id that it visits.
class Snapshot {
public:
    // What a snapshot consists of (SnapshotContents.h), for those who make the next one or look for
    // records by their type.
    struct Contents;
    explicit Snapshot(Contents contents);
    Snapshot(const Snapshot&);
    Snapshot(Snapshot&&) noexcept;
    ~Snapshot();
    const Contents& contents() const { return *_contents; }

    // Grows by one with each commit to the state directory, by whatever process.
    std::uint64_t version() const;

    const ArrayNames& names() const;

    // The record of an object; null if the id names no object of the class.
    const Endpoint* endpoint(Id id) const;
    const Initiator* initiator(Id id) const;
    const Target* target(Id id) const;
    const LogicalUnit* logicalUnit(Id id) const;
    const Volume* volume(Id id) const;
    const Session* session(Id id) const;
    const Connection* connection(Id id) const;
    const SessionParameters* sessionSettings(Id id) const;
    const ConnectionParameters* connectionSettings(Id id) const;

    // True if the id names an object, of whatever class.
    bool exists(Id id) const;

    // All zero for an id that names nothing and for an object to which nothing happened.
    LoginStatistics loginStatistics(Id target) const;
    SessionFailures sessionFailures(Id target) const;
    SessionStatistics sessionStatistics(Id session) const;
    InterfaceStatistics interfaceStatistics(Id endpoint) const;

    // The object of a name; 0 if there is none. iSCSI names and volume names are compared without
    // regard to the case of ASCII letters.
    Id initiatorByName(std::string_view iSCSIName) const;
    Id targetByName(std::string_view iSCSIName) const;
    Id volumeByName(std::string_view hexText) const;
    Id endpointByPortal(std::string_view address, std::uint16_t port) const;
    Id unitByLun(Id target, std::uint32_t lun) const;

    // The volume's name of a unit, also when the volume is gone; empty if there is no such unit.
    std::string_view volumeNameOf(Id unit) const;

    // True if the initiator may reach the target.
    bool granted(Id target, Id initiator) const;

    // A target's proposed login parameters are made with the target and have its serial; 0 if there
    // is no such target. And back.
    Id sessionSettingsOf(Id target) const;
    Id connectionSettingsOf(Id target) const;
    Id targetOfSettings(Id settings) const;

    // All objects of a class, in ascending order of their ids.
    std::size_t count(CLASSID_e objectClass) const;
    std::vector<Id> ids(CLASSID_e objectClass) const;
    void forEach(CLASSID_e objectClass, const std::function<void(Id)>& visit) const;

    // The objects of a class that are associated with an object or root id, in ascending order;
    // none for an id that names nothing. What is associated with what:
    //   SESSION_ROOT_OBJECT_ID   initiators, sessions, connections
    //   SYSTEM_OBJECT_ID         targets, endpoints
    //   target                   initiators granted, logical units, sessions, its two settings
    //   initiator                targets granted, sessions
    //   volume                   logical units
    //   session, endpoint        connections
    std::size_t countAssociated(Id owner, CLASSID_e objectClass) const;
    std::vector<Id> associated(Id owner, CLASSID_e objectClass) const;
    void forEachAssociated(Id owner, CLASSID_e objectClass,
                           const std::function<void(Id)>& visit) const;

protected:
    Snapshot& operator=(Snapshot&&) noexcept;

    std::unique_ptr<Contents> _contents;
};

// Keeps a snapshot alive; cheap to copy.
using SnapshotPtr = Shared<Snapshot>;

// What people call an object of a class, such as "logical unit".
const char* className(CLASSID_e objectClass);

// Throws DRAVOperationFailedException for an id that names no object of the class that is wanted:
// with ErrorCode::WrongClass if it is one of another class, else with NoSuchObject.
[[noreturn]] void failNoSuchObject(const Snapshot& snapshot, Id id, CLASSID_e wanted);

} // namespace array
