#include "array/change/Change.h"

#include <algorithm>

#include "array/change/ChangeParts.h"
#include "array/model/LoginParameters.h"
#include "array/model/Rules.h"

namespace array {

namespace {

// TSIHs have 16 bits and are not 0. Consecutive sessions differ, as long as there are no more of
// them.
std::uint16_t handleOf(std::uint32_t serial) {
    return static_cast<std::uint16_t>((serial - 1) % 0xFFFF + 1);
}

// With its iSCSI name as names are kept.
template<class Record>
Record kept(const Record& record) {
    Record made = record;
    made.name = keptISCSIName(record.name);
    return made;
}

} // namespace

Change::Change(ChangeWriter& writer, SnapshotDraft& next, Fabric& fabric,
               std::vector<Event>& events)
    : _writer(writer), _next(next), _fabric(fabric), _events(events) {}

const Snapshot& Change::snapshot() const {
    return _next;
}

void Change::setNames(const ArrayNames& names) {
    checkNames(names);
    write([&] { _writer.setNames(names); });
    _next.edit().names = Shared<ArrayNames>::make(names);
}

void Change::grant(Id target, Id initiator) {
    need<Target>(target);
    need<Initiator>(initiator);
    if (_next.granted(target, initiator)) {
        return;
    }
    write([&] { _writer.grant(target, initiator); });
    _next.edit().grant(target, initiator);
    _fabric.grantChanged(*this, target, initiator);
}

void Change::revoke(Id target, Id initiator) {
    need<Target>(target);
    need<Initiator>(initiator);
    if (!_next.granted(target, initiator)) {
        return;
    }
    write([&] { _writer.revoke(target, initiator); });
    _next.edit().revoke(target, initiator);
    _fabric.grantChanged(*this, target, initiator);
}

void Change::setStatistics(Id target, const LoginStatistics& statistics) {
    need<Target>(target);
    putStatistics(target, statistics);
}

void Change::setStatistics(Id target, const SessionFailures& statistics) {
    need<Target>(target);
    putStatistics(target, statistics);
}

void Change::setStatistics(Id session, const SessionStatistics& statistics) {
    need<Session>(session);
    putStatistics(session, statistics);
}

void Change::setStatistics(Id endpoint, const InterfaceStatistics& statistics) {
    need<Endpoint>(endpoint);
    putStatistics(endpoint, statistics);
}

// The values of an object that has a name; `holder` is the object that may have the name already.
template<class Record>
void Change::checkNamed(const Record& record, Id holder) const {
    checkValues(record);
    const Id found = _next.contents().byName<Record>(indexedName(record));
    if (found != 0 && found != holder) {
        fail(ErrorCode::NameTaken, array::quoted(indexedName(record)) + " is the name of another " +
                                       className(classOfRecord<Record>) + ", " + keyText(found) +
                                       ", and each has its own.");
    }
}

void Change::checkLun(Id target, std::uint32_t lun, Id holder) const {
    const std::string name = array::quoted(need<Target>(target).name);
    if (lun >= lunLimit) {
        fail(ErrorCode::BadLun, "LUN " + std::to_string(lun) + " of target " + name +
                                    " is out of range: it must be below " +
                                    std::to_string(lunLimit) + '.');
    }
    const Id found = _next.unitByLun(target, lun);
    if (found != 0 && found != holder) {
        fail(ErrorCode::LunTaken, "LUN " + std::to_string(lun) + " of target " + name +
                                      " is taken by logical unit " + keyText(found) + '.');
    }
}

void Change::noteSecret(Id owner, std::string_view name, const std::string& before,
                        const std::string& now) {
    if (now == before) {
        return;
    }
    _clearsSecret = _clearsSecret || !before.empty();
    if (isWeakSecret(now)) {
        Event event;
        event.type = "weak-secret";
        event.text = "The secret of " + array::quoted(name) + " is shorter than 12 bytes.";
        event.keyValues = "object=" + keyText(owner) + ", name=" + std::string(name);
        _events.push_back(event);
    }
    _fabric.secretChanged(*this, owner);
}

Id Change::create(const Endpoint& endpoint) {
    checkNamed(endpoint, 0);
    return make(endpoint);
}

Id Change::create(const Volume& volume) {
    checkNamed(volume, 0);
    return make(volume);
}

Id Change::create(const Initiator& given) {
    const Initiator initiator = kept(given);
    checkNamed(initiator, 0);
    const Id id = make(initiator);
    noteSecret(id, initiator.name, {}, initiator.secret);
    return id;
}

Id Change::create(const Target& given) {
    const Target target = kept(given);
    checkNamed(target, 0);
    const Id id = make(target);
    put(makeId(Pegasus::CLASSID_SESSION_SETTINGS, serialOf(id)), SessionParameters());
    put(makeId(Pegasus::CLASSID_CONNECTION_SETTINGS, serialOf(id)), ConnectionParameters());
    _fabric.targetChanged(*this, id);
    noteSecret(id, target.name, {}, target.secret);
    return id;
}

Id Change::create(const LogicalUnit& unit) {
    checkLun(unit.target, unit.lun, 0);
    need<Volume>(unit.volume);
    const Id id = make(LogicalUnit{unit.target, unit.lun, unit.access, unit.volume, {}});
    _fabric.unitChanged(*this, id);
    return id;
}

Id Change::create(const Session& session) {
    const Target& target = need<Target>(session.target);
    const Initiator& initiator = need<Initiator>(session.initiator);
    if (!_next.granted(session.target, session.initiator)) {
        fail(ErrorCode::LoginNotGranted, "Initiator " + array::quoted(initiator.name) +
                                             " has no grant for target " +
                                             array::quoted(target.name) + '.');
    }
    checkParameters(session.parameters, "a session with target " + array::quoted(target.name));
    Session made = session;
    if (made.tsih == 0) {
        made.tsih = handleOf(_next.contents().lastSerial(Pegasus::CLASSID_ISCSI_SESSION) + 1);
    }
    return make(made);
}

Id Change::create(const Connection& connection) {
    const Session& session = need<Session>(connection.session);
    need<Endpoint>(connection.endpoint);
    checkParameters(connection.parameters, "a connection of " + keyText(connection.session));
    std::size_t count = 0;
    std::uint16_t last = 0;
    _next.forEachAssociated(connection.session, Pegasus::CLASSID_ISCSI_CONNECTION, [&](Id id) {
        ++count;
        last = std::max(last, _next.connection(id)->cid);
    });
    if (count >= session.parameters.maxConnections) {
        fail(ErrorCode::LoginNoPath, "Session " + keyText(connection.session) + " may have " +
                                         std::to_string(session.parameters.maxConnections) +
                                         " connections (MaxConnections, RFC 7143 section 13.2).");
    }
    Connection made = connection;
    if (made.cid == 0) {
        made.cid = static_cast<std::uint16_t>(last + 1);
    }
    return make(made);
}

void Change::modify(Id id, const Volume& volume) {
    need<Volume>(id);
    checkNamed(volume, id);
    put(id, volume);
}

void Change::modify(Id id, const Initiator& given) {
    const Initiator initiator = kept(given);
    const std::string before = need<Initiator>(id).secret;
    checkNamed(initiator, id);
    put(id, initiator);
    noteSecret(id, initiator.name, before, initiator.secret);
}

void Change::modify(Id id, const Target& given) {
    const Target target = kept(given);
    const std::string before = need<Target>(id).secret;
    checkNamed(target, id);
    put(id, target);
    _fabric.targetChanged(*this, id);
    noteSecret(id, target.name, before, target.secret);
}

void Change::modify(Id id, const LogicalUnit& unit) {
    const LogicalUnit& before = need<LogicalUnit>(id);
    if (unit.target != before.target || unit.volume != before.volume) {
        fail(ErrorCode::FixedValue, "The target and the volume of logical unit " + keyText(id) +
                                        " cannot be changed. Remove it and make another one.");
    }
    checkLun(unit.target, unit.lun, id);
    put(id, LogicalUnit{unit.target, unit.lun, unit.access, unit.volume, before.volumeName});
    _fabric.unitChanged(*this, id);
}

void Change::modify(Id id, const SessionParameters& parameters) {
    need<SessionParameters>(id);
    checkParameters(parameters, keyText(id));
    put(id, parameters);
}

void Change::modify(Id id, const ConnectionParameters& parameters) {
    need<ConnectionParameters>(id);
    checkParameters(parameters, keyText(id));
    put(id, parameters);
}

} // namespace array
