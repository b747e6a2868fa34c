#include "array/model/ErrorCode.h"
#include "array/model/LoginParameters.h"
#include "array/model/Rules.h"
#include "array/model/SnapshotContents.h"
#include "array/model/Text.h"

namespace array {

namespace {

template<class Record>
void checkNamed(const Snapshot& snapshot, Id id, const Record& record) {
    checkValues(record);
    const Id found = snapshot.contents().byName<Record>(indexedName(record));
    if (found != id) {
        fail(ErrorCode::NameTaken, keyText(found) + " has the same name");
    }
}

// Each checks one record, and throws what the change would have thrown that made it so.
void check(const Snapshot& snapshot, Id id, const Endpoint& endpoint) {
    checkNamed(snapshot, id, endpoint);
}

void check(const Snapshot& snapshot, Id id, const Initiator& initiator) {
    checkNamed(snapshot, id, initiator);
}

void check(const Snapshot& snapshot, Id id, const Volume& volume) {
    checkNamed(snapshot, id, volume);
}

void check(const Snapshot& snapshot, Id id, const Target& target) {
    checkNamed(snapshot, id, target);
    if (!snapshot.sessionSettings(snapshot.sessionSettingsOf(id)) ||
        !snapshot.connectionSettings(snapshot.connectionSettingsOf(id))) {
        fail(ErrorCode::StateDamaged, "its settings are missing");
    }
}

void check(const Snapshot& snapshot, Id id, const LogicalUnit& unit) {
    if (unit.lun >= lunLimit) {
        fail(ErrorCode::BadLun, "LUN " + std::to_string(unit.lun) + " is out of range");
    }
    if (snapshot.unitByLun(unit.target, unit.lun) != id) {
        fail(ErrorCode::LunTaken, "another logical unit of " + keyText(unit.target) + " has LUN " +
                                      std::to_string(unit.lun) + " too");
    }
}

void check(const Snapshot& snapshot, Id, const Session& session) {
    checkParameters(session.parameters, "it");
    if (!snapshot.granted(session.target, session.initiator)) {
        fail(ErrorCode::LoginNotGranted,
             keyText(session.initiator) + " has no grant for " + keyText(session.target));
    }
}

void check(const Snapshot&, Id, const Connection& connection) {
    checkParameters(connection.parameters, "it");
}

template<class Parameters>
void checkSettings(const Snapshot& snapshot, Id id, const Parameters& parameters) {
    checkParameters(parameters, "it");
    if (snapshot.targetOfSettings(id) == 0) {
        fail(ErrorCode::StateDamaged, "its target is missing");
    }
}
void check(const Snapshot& snapshot, Id id, const SessionParameters& parameters) {
    checkSettings(snapshot, id, parameters);
}
void check(const Snapshot& snapshot, Id id, const ConnectionParameters& parameters) {
    checkSettings(snapshot, id, parameters);
}

} // namespace

std::vector<std::string> findBrokenRules(const Snapshot& snapshot) {
    std::vector<std::string> findings;
    forEachRecordType([&]<class Record>(std::type_identity<Record>) {
        snapshot.forEach(classOfRecord<Record>, [&](Id id) {
            try {
                check(snapshot, id, *snapshot.contents().find<Record>(id));
            } catch (const Pegasus::DRAVOperationFailedException& failure) {
                findings.push_back(keyText(id) + ": " + toUtf8(failure.getMessage()));
            }
        });
    });
    return findings;
}

} // namespace array
