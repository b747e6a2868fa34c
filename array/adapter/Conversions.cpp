#include "array/adapter/Conversions.h"

#include "array/model/Text.h"

namespace array {

using namespace Pegasus;

namespace {

template<class To, class From>
void copySession(To& to, const From& from) {
    to.maxConnections = from.maxConnections;
    to.initialR2T = from.initialR2T;
    to.immediateData = from.immediateData;
    to.maxOutstandingR2T = from.maxOutstandingR2T;
    to.firstBurstLength = from.firstBurstLength;
    to.maxBurstLength = from.maxBurstLength;
    to.dataSequenceInOrder = from.dataSequenceInOrder;
    to.dataPDUInOrder = from.dataPDUInOrder;
    to.defaultTime2Wait = from.defaultTime2Wait;
    to.defaultTime2Retain = from.defaultTime2Retain;
    to.errorRecoveryLevel = from.errorRecoveryLevel;
}

template<class To, class From>
void copyConnection(To& to, const From& from) {
    to.maxRecvDataSegmentLength = from.maxRecvDataSegmentLength;
    to.primaryHeaderDigest = from.primaryHeaderDigest;
    to.primaryDataDigest = from.primaryDataDigest;
    to.secondaryHeaderDigest = from.secondaryHeaderDigest;
    to.secondaryDataDigest = from.secondaryDataDigest;
    to.markersOnReceive = from.markersOnReceive;
    to.primaryAuthMethod = from.primaryAuthMethod;
    to.secondaryAuthMethod = from.secondaryAuthMethod;
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
    record.state = volume.state;
    record.elementName = fromUtf8(volume.elementName);
    record.size = volume.size;
    return record;
}

DRAVSessionSettings toEngine(const Snapshot&, Id id, const SessionParameters& parameters) {
    DRAVSessionSettings record;
    record.objectID = id;
    copySession(record, parameters);
    return record;
}

DRAVConnectionSettings toEngine(const Snapshot&, Id id, const ConnectionParameters& parameters) {
    DRAVConnectionSettings record;
    record.objectID = id;
    copyConnection(record, parameters);
    return record;
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
    SessionParameters parameters;
    copySession(parameters, record);
    return parameters;
}

ConnectionParameters fromEngine(const DRAVConnectionSettings& record) {
    ConnectionParameters parameters;
    copyConnection(parameters, record);
    return parameters;
}

} // namespace array
