#include "array/model/SnapshotContents.h"

namespace array {

namespace {

using Contents = Snapshot::Contents;

// What an object's record says beside its own values: its name and whom it belongs to. `link`
// enters it into the contents, `unlink` takes it out again.
template<class Record>
void link(Contents& contents, Id id, const Record& record) {
    NameIndex& names = std::get<NamesOf<Record>>(contents.nameIndexes).index;
    names.add(hashOfName(indexedName(record)), serialOf(id));
}
template<class Record>
void unlink(Contents& contents, Id id, const Record& record) {
    NameIndex& names = std::get<NamesOf<Record>>(contents.nameIndexes).index;
    names.remove(hashOfName(indexedName(record)), serialOf(id));
}

void link(Contents& contents, Id id, const LogicalUnit& unit) {
    contents.unitsOfTarget.add(unit.target, id);
    if (unit.volume != 0) {
        contents.unitsOfVolume.add(unit.volume, id);
    }
    setIn(contents.unitsByLun, unit.target, unit.lun, id);
}
void unlink(Contents& contents, Id id, const LogicalUnit& unit) {
    contents.unitsOfTarget.remove(unit.target, id);
    if (unit.volume != 0) {
        contents.unitsOfVolume.remove(unit.volume, id);
    }
    const PersistentMap<Id>* units = contents.unitsByLun.find(unit.target);
    const Id* holder = units ? units->find(unit.lun) : nullptr;
    if (holder && *holder == id) { // else another unit has the number by now
        eraseIn(contents.unitsByLun, unit.target, unit.lun);
    }
}

void link(Contents& contents, Id id, const Session& session) {
    contents.sessionsOfTarget.add(session.target, id);
    contents.sessionsOfInitiator.add(session.initiator, id);
}
void unlink(Contents& contents, Id id, const Session& session) {
    contents.sessionsOfTarget.remove(session.target, id);
    contents.sessionsOfInitiator.remove(session.initiator, id);
}

void link(Contents& contents, Id id, const Connection& connection) {
    contents.connectionsOfSession.add(connection.session, id);
    contents.connectionsOfEndpoint.add(connection.endpoint, id);
}
void unlink(Contents& contents, Id id, const Connection& connection) {
    contents.connectionsOfSession.remove(connection.session, id);
    contents.connectionsOfEndpoint.remove(connection.endpoint, id);
}

// Settings have no name, and belong to the target of the same serial.
void link(Contents&, Id, const SessionParameters&) {}
void unlink(Contents&, Id, const SessionParameters&) {}
void link(Contents&, Id, const ConnectionParameters&) {}
void unlink(Contents&, Id, const ConnectionParameters&) {}

} // namespace

std::string indexedName(const Endpoint& endpoint) {
    return endpoint.address + ' ' + std::to_string(endpoint.port);
}

template<class Record>
void Contents::put(Id id, Record record) {
    Table<Record>& table = std::get<Table<Record>>(objects);
    if (const Shared<Record>* before = table.find(serialOf(id))) {
        unlink(*this, id, **before);
    }
    link(*this, id, record);
    table.set(serialOf(id), Shared<Record>::make(std::move(record)));
    serialUsed(id);
}

template<class Record>
void Contents::erase(Id id) {
    serialUsed(id);
    Table<Record>& table = std::get<Table<Record>>(objects);
    const Shared<Record>* found = table.find(serialOf(id));
    if (!found) {
        return;
    }
    unlink(*this, id, **found);
    table.erase(serialOf(id));
    forEachStatisticsType([&]<class Statistics>(std::type_identity<Statistics>) {
        if (ownerOfStatistics<Statistics> == classOfRecord<Record>) {
            std::get<Table<Statistics>>(statistics).erase(serialOf(id));
        }
    });
}

void Contents::grant(Id target, Id initiator) {
    initiatorsOfTarget.add(target, initiator);
    targetsOfInitiator.add(initiator, target);
}

void Contents::revoke(Id target, Id initiator) {
    initiatorsOfTarget.remove(target, initiator);
    targetsOfInitiator.remove(initiator, target);
}

std::uint32_t Contents::lastSerial(CLASSID_e objectClass) const {
    const std::uint32_t* last = lastSerials.find(static_cast<std::uint32_t>(objectClass));
    return last ? *last : 0;
}

void Contents::serialUsed(Id id) {
    if (serialOf(id) > lastSerial(classOf(id))) {
        lastSerials.set(static_cast<std::uint32_t>(classOf(id)), serialOf(id));
    }
}

template void Contents::put(Id, Endpoint);
template void Contents::put(Id, Initiator);
template void Contents::put(Id, Target);
template void Contents::put(Id, LogicalUnit);
template void Contents::put(Id, Connection);
template void Contents::put(Id, Session);
template void Contents::put(Id, Volume);
template void Contents::put(Id, ConnectionParameters);
template void Contents::put(Id, SessionParameters);
template void Contents::erase<Endpoint>(Id);
template void Contents::erase<Initiator>(Id);
template void Contents::erase<Target>(Id);
template void Contents::erase<LogicalUnit>(Id);
template void Contents::erase<Connection>(Id);
template void Contents::erase<Session>(Id);
template void Contents::erase<Volume>(Id);
template void Contents::erase<ConnectionParameters>(Id);
template void Contents::erase<SessionParameters>(Id);

} // namespace array
