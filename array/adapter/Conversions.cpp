#include "array/adapter/Conversions.h"

#include "array/model/LoginParameters.h"
#include "array/model/Text.h"

namespace array {

using namespace Pegasus;

namespace {

template<class Record, class Parameters>
Record settingsRecord(Id id, const Parameters& parameters) {
    Record record;
    record.objectID = id;
    forEachLoginParameter<Parameters>(
        [&](const auto& row) { record.*row.engineField = parameters.*row.field; });
    return record;
}

template<class Parameters, class Record>
Parameters parametersOf(const Record& record) {
    Parameters parameters;
    forEachLoginParameter<Parameters>(
        [&](const auto& row) { parameters.*row.field = record.*row.engineField; });
    return parameters;
}

} // namespace

DRAVInitiator toEngine(const Snapshot&, Id id, const Initiator& initiator) {
    DRAVInitiator record(fromUtf8(initiator.name));
    record.objectID = id;
    record.secret = fromUtf8(initiator.secret);
    return record;
}

DRAVTarget toEngine(const Snapshot& snapshot, Id id, const Target& target) {
    DRAVTarget record(fromUtf8(target.name));
    record.objectID = id;
    record.sessionPresence = snapshot.countAssociated(id, CLASSID_ISCSI_SESSION) != 0 ? 1 : 0;
    record.secret = fromUtf8(target.secret);
    return record;
}

DRAVLogicalUnit toEngine(const Snapshot& snapshot, Id id, const LogicalUnit& unit) {
    DRAVLogicalUnit record(unit.target, unit.lun, unit.access, unit.volume);
    record.objectID = id;
    record.volumeName = fromUtf8(snapshot.volumeNameOf(id));
    return record;
}

DRAVVolume toEngine(const Snapshot&, Id id, const Volume& volume) {
    DRAVVolume record;
    record.objectID = id;
    record.name = fromUtf8(volume.name);
    record.state = volume.status;
    record.elementName = fromUtf8(volume.elementName);
    record.size = volume.size;
    return record;
}

DRAVSessionSettings toEngine(const Snapshot&, Id id, const SessionParameters& parameters) {
    return settingsRecord<DRAVSessionSettings>(id, parameters);
}

DRAVConnectionSettings toEngine(const Snapshot&, Id id, const ConnectionParameters& parameters) {
    return settingsRecord<DRAVConnectionSettings>(id, parameters);
}

Initiator fromEngine(const DRAVInitiator& record) {
    return {toUtf8(record.name), toUtf8(record.secret)};
}

Target fromEngine(const DRAVTarget& record) {
    return {toUtf8(record.name), toUtf8(record.secret)};
}

LogicalUnit fromEngine(const DRAVLogicalUnit& record) {
    return {record.targetID, record.lun, record.readOnly, record.volumeID, {}};
}

Volume fromEngine(const DRAVVolume& record) {
    return {toUtf8(record.name), toUtf8(record.elementName), record.size, record.state};
}

SessionParameters fromEngine(const DRAVSessionSettings& record) {
    return parametersOf<SessionParameters>(record);
}

ConnectionParameters fromEngine(const DRAVConnectionSettings& record) {
    return parametersOf<ConnectionParameters>(record);
}

} // namespace array
