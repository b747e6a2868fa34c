#include "array/store/State.h"

namespace array {

namespace {

using State = Snapshot::State;

// What an object's record says beside its own values: names and whom it belongs to. `link` enters
// it into the state, `unlink` takes it out again; a record type without either says nothing.
void link(State& state, Id id, const Endpoint& endpoint) {
    state.endpointNames.add(hashOfName(indexedName(endpoint)), serialOf(id));
}
void unlink(State& state, Id id, const Endpoint& endpoint) {
    state.endpointNames.remove(hashOfName(indexedName(endpoint)), serialOf(id));
}

void link(State& state, Id id, const Volume& volume) {
    state.volumeNames.add(hashOfName(volume.name), serialOf(id));
}
void unlink(State& state, Id id, const Volume& volume) {
    state.volumeNames.remove(hashOfName(volume.name), serialOf(id));
}

void link(State& state, Id id, const Initiator& initiator) {
    state.initiatorNames.add(hashOfName(initiator.name), serialOf(id));
}
void unlink(State& state, Id id, const Initiator& initiator) {
    state.initiatorNames.remove(hashOfName(initiator.name), serialOf(id));
}

void link(State& state, Id id, const Target& target) {
    state.targetNames.add(hashOfName(target.name), serialOf(id));
}
void unlink(State& state, Id id, const Target& target) {
    state.targetNames.remove(hashOfName(target.name), serialOf(id));
}

void link(State& state, Id id, const LogicalUnit& unit) {
    state.unitsOfTarget.add(unit.target, id);
    if (unit.volume != 0)
        state.unitsOfVolume.add(unit.volume, id);
    setIn(state.unitsByLun, unit.target, unit.lun, id);
}
void unlink(State& state, Id id, const LogicalUnit& unit) {
    state.unitsOfTarget.remove(unit.target, id);
    if (unit.volume != 0)
        state.unitsOfVolume.remove(unit.volume, id);
    const PersistentMap<Id>* units = state.unitsByLun.find(unit.target);
    const Id* holder = units ? units->find(unit.lun) : nullptr;
    if (holder && *holder == id) // else another unit has the number by now
        eraseIn(state.unitsByLun, unit.target, unit.lun);
}

void link(State& state, Id id, const Session& session) {
    state.sessionsOfTarget.add(session.target, id);
    state.sessionsOfInitiator.add(session.initiator, id);
}
void unlink(State& state, Id id, const Session& session) {
    state.sessionsOfTarget.remove(session.target, id);
    state.sessionsOfInitiator.remove(session.initiator, id);
}

void link(State& state, Id id, const Connection& connection) {
    state.connectionsOfSession.add(connection.session, id);
    state.connectionsOfEndpoint.add(connection.endpoint, id);
}
void unlink(State& state, Id id, const Connection& connection) {
    state.connectionsOfSession.remove(connection.session, id);
    state.connectionsOfEndpoint.remove(connection.endpoint, id);
}

void link(State&, Id, const SessionParameters&) {}
void unlink(State&, Id, const SessionParameters&) {}
void link(State&, Id, const ConnectionParameters&) {}
void unlink(State&, Id, const ConnectionParameters&) {}

} // namespace

std::string indexedName(const Endpoint& endpoint) {
    return endpoint.address + ' ' + std::to_string(endpoint.port);
}

template<class Record>
void State::put(Id id, Record record) {
    Table<Record>& table = std::get<Table<Record>>(objects);
    if (const Shared<Record>* before = table.find(serialOf(id)))
        unlink(*this, id, **before);
    link(*this, id, record);
    table.set(serialOf(id), Shared<Record>::make(std::move(record)));
    serialUsed(id);
}

template<class Record>
void State::erase(Id id) {
    serialUsed(id);
    Table<Record>& table = std::get<Table<Record>>(objects);
    const Shared<Record>* found = table.find(serialOf(id));
    if (!found)
        return;
    unlink(*this, id, **found);
    table.erase(serialOf(id));
    forEachStatisticsType([&]<class Statistics>(std::type_identity<Statistics>) {
        if (ownerOfStatistics<Statistics> == classOfRecord<Record>)
            std::get<Table<Statistics>>(statistics).erase(serialOf(id));
    });
}

void State::grant(Id target, Id initiator) {
    initiatorsOfTarget.add(target, initiator);
    targetsOfInitiator.add(initiator, target);
}

void State::revoke(Id target, Id initiator) {
    initiatorsOfTarget.remove(target, initiator);
    targetsOfInitiator.remove(initiator, target);
}

std::uint32_t State::lastSerial(CLASSID_e objectClass) const {
    const std::uint32_t* last = lastSerials.find(static_cast<std::uint32_t>(objectClass));
    return last ? *last : 0;
}

void State::serialUsed(Id id) {
    if (serialOf(id) > lastSerial(classOf(id)))
        lastSerials.set(static_cast<std::uint32_t>(classOf(id)), serialOf(id));
}

template void State::put(Id, Endpoint);
template void State::put(Id, Initiator);
template void State::put(Id, Target);
template void State::put(Id, LogicalUnit);
template void State::put(Id, Connection);
template void State::put(Id, Session);
template void State::put(Id, Volume);
template void State::put(Id, ConnectionParameters);
template void State::put(Id, SessionParameters);
template void State::erase<Endpoint>(Id);
template void State::erase<Initiator>(Id);
template void State::erase<Target>(Id);
template void State::erase<LogicalUnit>(Id);
template void State::erase<Connection>(Id);
template void State::erase<Session>(Id);
template void State::erase<Volume>(Id);
template void State::erase<ConnectionParameters>(Id);
template void State::erase<SessionParameters>(Id);

} // namespace array
