#include "engine/DRAVEngine.h"

#include "array/adapter/Conversions.h"
#include "array/adapter/ThisArray.h"
#include "array/model/ErrorCode.h"
#include "array/model/Snapshot.h"
#include "array/model/SnapshotContents.h"
#include "array/model/Text.h"

namespace Pegasus {

namespace {

using array::changeArray;
using array::currentSnapshot;
using array::ErrorCode;
using array::SnapshotPtr;

// What the engine does with the records of a class; null: records of the class cannot be made so.
struct RecordClass {
    CLASSID_e objectClass;
    ManagedObject* (*get)(const array::Snapshot&, Uint32 id);
    Uint32 (*create)(const ManagedObject&);
    void (*modify)(const ManagedObject&);
};

template<class Record>
const Record& as(const ManagedObject& record, CLASSID_e objectClass) {
    if (const auto* cast = dynamic_cast<const Record*>(&record)) {
        return *cast;
    }
    array::fail(ErrorCode::NoRecord, std::string("The record given is none of the class ") +
                                         array::className(objectClass) + '.');
}

template<class Values>
ManagedObject* get(const array::Snapshot& snapshot, Uint32 id) {
    const Values* values = snapshot.contents().find<Values>(id);
    if (!values) {
        array::failNoSuchObject(snapshot, id, array::classOfRecord<Values>);
    }
    using Record = decltype(array::toEngine(snapshot, id, *values));
    return new Record(array::toEngine(snapshot, id, *values));
}

template<class Record, class Values>
Uint32 create(const ManagedObject& record) {
    const Values values = array::fromEngine(as<Record>(record, array::classOfRecord<Values>));
    Uint32 id = 0;
    changeArray([&](array::Change& next) { id = next.create(values); });
    return id;
}

template<class Record, class Values>
void modify(const ManagedObject& record) {
    const Values values = array::fromEngine(as<Record>(record, array::classOfRecord<Values>));
    changeArray([&](array::Change& next) { next.modify(record.objectID, values); });
}

constexpr RecordClass recordClasses[] = {
    {CLASSID_INITIATOR, get<array::Initiator>, create<DRAVInitiator, array::Initiator>,
     modify<DRAVInitiator, array::Initiator>},
    {CLASSID_TARGET, get<array::Target>, create<DRAVTarget, array::Target>,
     modify<DRAVTarget, array::Target>},
    {CLASSID_LOGICAL_UNIT, get<array::LogicalUnit>, create<DRAVLogicalUnit, array::LogicalUnit>,
     modify<DRAVLogicalUnit, array::LogicalUnit>},
    {CLASSID_VOLUME, get<array::Volume>, create<DRAVVolume, array::Volume>,
     modify<DRAVVolume, array::Volume>},
    {CLASSID_SESSION_SETTINGS, get<array::SessionParameters>, nullptr,
     modify<DRAVSessionSettings, array::SessionParameters>},
    {CLASSID_CONNECTION_SETTINGS, get<array::ConnectionParameters>, nullptr,
     modify<DRAVConnectionSettings, array::ConnectionParameters>},
};

const RecordClass& recordClass(CLASSID_e objectClass) {
    for (const RecordClass& row : recordClasses) {
        if (row.objectClass == objectClass) {
            return row;
        }
    }
    array::fail(ErrorCode::NoRecord, std::string("Objects of the class ") +
                                         array::className(objectClass) + " (" +
                                         std::to_string(objectClass) + ") have no record.");
}

} // namespace

DRAVEngine* DRAVEngine::_getInstance() {
    static DRAVEngine engine;
    try {
        currentSnapshot(); // sets the name pointers before the first operation
    } catch (const Exception&) {
        // Each operation will say so, and try again.
    }
    return &engine;
}

ManagedObject* DRAVEngine::getObject(CLASSID_e objectClass, Uint32 id) {
    const RecordClass& row = recordClass(objectClass);
    return row.get(*currentSnapshot(), id);
}

Array<Uint32> DRAVEngine::enumerateAssociatedObjects(Uint32 id, CLASSID_e objectClass) {
    const SnapshotPtr now = currentSnapshot();
    Array<Uint32> ids;
    ids.reserveCapacity(static_cast<Uint32>(now->countAssociated(id, objectClass)));
    now->forEachAssociated(id, objectClass, [&](Uint32 associated) { ids.append(associated); });
    return ids;
}

Uint32 DRAVEngine::createObject(CLASSID_e objectClass, const ManagedObject& record) {
    const RecordClass& row = recordClass(objectClass);
    if (!row.create) {
        array::fail(ErrorCode::NoRecord, std::string("A ") + array::className(objectClass) +
                                             " is made with its target and not by itself.");
    }
    return row.create(record);
}

void DRAVEngine::modifyObject(CLASSID_e objectClass, const ManagedObject& record) {
    recordClass(objectClass).modify(record);
}

void DRAVEngine::deleteObject(CLASSID_e objectClass, Uint32 id) {
    changeArray([&](array::Change& next) {
        if (array::classOf(id) != objectClass || !next.snapshot().exists(id)) {
            array::failNoSuchObject(next.snapshot(), id, objectClass);
        }
        next.remove(id);
    });
}

void DRAVEngine::createAssociation(Uint32 targetId, Uint32 initiatorId) {
    changeArray([&](array::Change& next) { next.grant(targetId, initiatorId); });
}

void DRAVEngine::deleteAssociation(Uint32 targetId, Uint32 initiatorId) {
    changeArray([&](array::Change& next) { next.revoke(targetId, initiatorId); });
}

Uint32 DRAVEngine::getObjectIDByKey(CLASSID_e objectClass, const String& key) {
    if (objectClass != CLASSID_VOLUME) {
        return 0;
    }
    return currentSnapshot()->volumeByName(array::hexTextOf(key));
}

Uint32 DRAVEngine::getiSCSIObjectIDByName(CLASSID_e objectClass, const String& name) {
    const std::string text = array::toUtf8(name);
    if (objectClass == CLASSID_INITIATOR) {
        return currentSnapshot()->initiatorByName(text);
    }
    if (objectClass == CLASSID_TARGET) {
        return currentSnapshot()->targetByName(text);
    }
    return 0;
}

} // namespace Pegasus
