#include "array/change/Change.h"

#include <type_traits>

#include "array/change/ChangeParts.h"
#include "array/model/LoginParameters.h"
#include "array/model/Rules.h"

namespace array {

Change::Change(ChangeWriter& writer, Snapshot& next, Fabric& fabric, std::vector<Event>& events)
    : _writer(writer), _next(next), _fabric(fabric), _events(events) {}

const Snapshot& Change::snapshot() const {
    return _next;
}

void Change::setNames(const Names& names) {
    checkNames(names);
    write([&] { _writer.setNames(names); });
    _next.mutableContents().names = Shared<Names>::make(names);
}

void Change::grant(Id target, Id initiator) {
    need<Target>(target);
    need<Initiator>(initiator);
    if (_next.granted(target, initiator)) {
        return;
    }
    write([&] { _writer.grant(target, initiator); });
    _next.mutableContents().grant(target, initiator);
    _fabric.grantChanged(*this, target, initiator);
}

void Change::revoke(Id target, Id initiator) {
    need<Target>(target);
    need<Initiator>(initiator);
    if (!_next.granted(target, initiator)) {
        return;
    }
    write([&] { _writer.revoke(target, initiator); });
    _next.mutableContents().revoke(target, initiator);
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

// The name of an object must not be that of another one; `holder` is the object that may have it.
template<class Record>
void Change::checkNameFree(const NameIndex& names, std::string_view name, Id holder) const {
    const Id found = _next.contents().byName<Record>(names, name);
    if (found != 0 && found != holder) {
        fail(ErrorCode::NameTaken, array::quoted(name) + " is the name of another " +
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
    checkEndpoint(endpoint);
    checkNameFree<Endpoint>(_next.contents().endpointNames, indexedName(endpoint), 0);
    return make(endpoint);
}

Id Change::create(const Volume& volume) {
    checkVolumeName(volume.name);
    checkElementName(volume.elementName);
    checkNameFree<Volume>(_next.contents().volumeNames, volume.name, 0);
    return make(volume);
}

Id Change::create(const Initiator& initiator) {
    checkISCSIName(initiator.name);
    checkSecret(initiator.secret, initiator.name);
    checkNameFree<Initiator>(_next.contents().initiatorNames, initiator.name, 0);
    const Id id = make(initiator);
    noteSecret(id, initiator.name, {}, initiator.secret);
    return id;
}

Id Change::create(const Target& target) {
    checkISCSIName(target.name);
    checkSecret(target.secret, target.name);
    checkNameFree<Target>(_next.contents().targetNames, target.name, 0);
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

void Change::modify(Id id, const Volume& volume) {
    need<Volume>(id);
    checkVolumeName(volume.name);
    checkElementName(volume.elementName);
    checkNameFree<Volume>(_next.contents().volumeNames, volume.name, id);
    put(id, volume);
}

void Change::modify(Id id, const Initiator& initiator) {
    const std::string before = need<Initiator>(id).secret;
    checkISCSIName(initiator.name);
    checkSecret(initiator.secret, initiator.name);
    checkNameFree<Initiator>(_next.contents().initiatorNames, initiator.name, id);
    put(id, initiator);
    noteSecret(id, initiator.name, before, initiator.secret);
}

void Change::modify(Id id, const Target& target) {
    const std::string before = need<Target>(id).secret;
    checkISCSIName(target.name);
    checkSecret(target.secret, target.name);
    checkNameFree<Target>(_next.contents().targetNames, target.name, id);
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
