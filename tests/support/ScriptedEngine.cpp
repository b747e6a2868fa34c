#include "tests/support/ScriptedEngine.h"

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

#include "engine/DRAVKeys.h"
#include "tests/support/Log.h"
#include "tests/support/Text.h"

namespace scripted {

using namespace Pegasus;

namespace {

std::atomic<int> handedOut;
std::atomic<int> mostHandedOut; // to one thread
thread_local int handedOutHere;

void noteHandedOut() {
    ++handedOut;
    const int now = ++handedOutHere;
    int most = mostHandedOut;
    while (now > most && !mostHandedOut.compare_exchange_weak(most, now)) {
    }
}

void noteDeleted() {
    --handedOut;
    --handedOutHere;
}

// A copy of a record that counts itself while it lives.
template<class Record>
class HandedOut : public Record {
public:
    explicit HandedOut(const Record& record) : Record(record) { noteHandedOut(); }
    HandedOut(const HandedOut&) = delete;
    HandedOut& operator=(const HandedOut&) = delete;
    ~HandedOut() override { noteDeleted(); }
};

struct Failure {
    Uint32 code;
    String message;
    int successesBefore;
};

struct Script {
    std::map<Uint32, std::function<ManagedObject*()>> records;
    std::map<std::pair<Uint32, CLASSID_e>, std::vector<Uint32>> associated;
    std::map<std::pair<CLASSID_e, std::string>, Uint32> idsByName;
    std::map<std::pair<CLASSID_e, std::string>, Uint32> idsByKey;
    std::map<std::string, Failure> failures;
    std::vector<Event> events;
    Uint32 nextId = 0;
    Uint32 nextSerial = 0x100;
};

std::mutex mutex; // of the script
Script script;

template<class Record>
void keep(Uint32 id, Record record) {
    record.objectID = id;
    const std::lock_guard lock(mutex);
    script.records[id] = [record] { return new HandedOut<Record>(record); };
}

// Keeps a record that is known by its base only.
template<class... Records>
void keepAsOneOf(Uint32 id, const ManagedObject& record) {
    const auto keepAs = [id]<class Record>(const Record* known) {
        if (known) {
            keep(id, *known);
        }
    };
    (keepAs(dynamic_cast<const Records*>(&record)), ...);
}

void keepAny(Uint32 id, const ManagedObject& record) {
    keepAsOneOf<DRAVInitiator, DRAVTarget, DRAVLogicalUnit, DRAVVolume, DRAVSessionSettings,
                DRAVConnectionSettings>(id, record);
}

template<class Map>
typename Map::mapped_type find(const Map& map, const typename Map::key_type& key) {
    const std::lock_guard lock(mutex);
    const auto found = map.find(key);
    return found == map.end() ? typename Map::mapped_type() : found->second;
}

std::string classAndId(CLASSID_e objectClass, Uint32 id) {
    return std::to_string(objectClass) + ", " + idText(id);
}

// Keys of volumes are not text: each character as two hexadecimal digits.
std::string hex(const String& key) {
    std::string digits;
    for (Uint32 i = 0; i < key.size(); ++i) {
        digits += idText(key[i]).substr(8);
    }
    return digits;
}

} // namespace

void resetEngine() {
    {
        const std::lock_guard lock(mutex);
        script = Script();
    }
    mostHandedOut = 0;
    clearLog();
}

void addRecord(Uint32 id, const DRAVInitiator& record) {
    keep(id, record);
}

void addRecord(Uint32 id, const DRAVTarget& record) {
    keep(id, record);
}

void addRecord(Uint32 id, const DRAVLogicalUnit& record) {
    keep(id, record);
}

void addRecord(Uint32 id, const DRAVVolume& record) {
    keep(id, record);
}

void addRecord(Uint32 id, const DRAVSessionSettings& record) {
    keep(id, record);
}

void addRecord(Uint32 id, const DRAVConnectionSettings& record) {
    keep(id, record);
}

void addNullRecord(Uint32 id) {
    const std::lock_guard lock(mutex);
    script.records[id] = []() -> ManagedObject* { return nullptr; };
}

int recordsHandedOut() {
    return handedOut;
}

int mostRecordsHandedOut() {
    return mostHandedOut;
}

void associate(Uint32 id, CLASSID_e objectClass, const std::vector<Uint32>& ids) {
    const std::lock_guard lock(mutex);
    script.associated[{id, objectClass}] = ids;
}

void setIdByName(CLASSID_e objectClass, const String& name, Uint32 id) {
    const std::lock_guard lock(mutex);
    script.idsByName[{objectClass, text(name)}] = id;
}

void setIdByKey(CLASSID_e objectClass, const String& key, Uint32 id) {
    const std::lock_guard lock(mutex);
    script.idsByKey[{objectClass, hex(key)}] = id;
}

void setNextId(Uint32 id) {
    const std::lock_guard lock(mutex);
    script.nextId = id;
}

void failNext(const std::string& operation, Uint32 code, const String& message,
              int successesBefore) {
    const std::lock_guard lock(mutex);
    script.failures.insert_or_assign(operation, Failure{code, message, successesBefore});
}

std::vector<Event> events() {
    const std::lock_guard lock(mutex);
    return script.events;
}

void noteCall(const std::string& operation, const std::string& arguments) {
    note(Entry::Call, operation + "(" + arguments + ")");
    const std::lock_guard lock(mutex);
    const auto failure = script.failures.find(operation);
    if (failure == script.failures.end() || failure->second.successesBefore-- > 0) {
        return;
    }
    const auto [code, message, _] = script.failures.extract(failure).mapped();
    throw DRAVOperationFailedException(code, message);
}

} // namespace scripted

namespace Pegasus {

using namespace scripted;

namespace {

const String HOST("array1.example.com");
const String SYSTEM("array1");

} // namespace

const String* DRAVEngine::_OvrinHostNamePtr = &HOST;
const String* DRAVEngine::_OvrinSystemNamePtr = &SYSTEM;

DRAVEngine* DRAVEngine::_getInstance() {
    static DRAVEngine engine;
    note(Entry::Call, "_getInstance()");
    return &engine;
}

ManagedObject* DRAVEngine::getObject(CLASSID_e objectClass, Uint32 id) {
    noteCall("getObject", classAndId(objectClass, id));
    const auto copy = find(script.records, id);
    if (!copy) {
        throw DRAVOperationFailedException(1, String("no record ") + DRAVObjectKey(id));
    }
    return copy();
}

Array<Uint32> DRAVEngine::enumerateAssociatedObjects(Uint32 id, CLASSID_e objectClass) {
    noteCall("enumerateAssociatedObjects", idText(id) + ", " + std::to_string(objectClass));
    const std::vector<Uint32> ids = find(script.associated, {id, objectClass});
    return Array<Uint32>(ids.data(), static_cast<Uint32>(ids.size()));
}

Uint32 DRAVEngine::createObject(CLASSID_e objectClass, const ManagedObject& record) {
    noteCall("createObject", std::to_string(objectClass) + ", " + recordText(record));
    Uint32 id;
    {
        const std::lock_guard lock(mutex);
        id = std::exchange(script.nextId, 0);
        if (id == 0) {
            id = static_cast<Uint32>(objectClass) << 24 | script.nextSerial++;
        }
    }
    keepAny(id, record);
    return id;
}

void DRAVEngine::modifyObject(CLASSID_e objectClass, const ManagedObject& record) {
    noteCall("modifyObject", std::to_string(objectClass) + ", " + recordText(record));
    keepAny(record.objectID, record);
}

void DRAVEngine::deleteObject(CLASSID_e objectClass, Uint32 id) {
    noteCall("deleteObject", classAndId(objectClass, id));
    const std::lock_guard lock(mutex);
    script.records.erase(id);
}

void DRAVEngine::createAssociation(Uint32 targetId, Uint32 initiatorId) {
    noteCall("createAssociation", idText(targetId) + ", " + idText(initiatorId));
}

void DRAVEngine::deleteAssociation(Uint32 targetId, Uint32 initiatorId) {
    noteCall("deleteAssociation", idText(targetId) + ", " + idText(initiatorId));
}

Uint32 DRAVEngine::getObjectIDByKey(CLASSID_e objectClass, const String& key) {
    noteCall("getObjectIDByKey", std::to_string(objectClass) + ", " + hex(key));
    return find(script.idsByKey, {objectClass, hex(key)});
}

Uint32 DRAVEngine::getiSCSIObjectIDByName(CLASSID_e objectClass, const String& name) {
    noteCall("getiSCSIObjectIDByName", std::to_string(objectClass) + ", " + quoted(name));
    return find(script.idsByName, {objectClass, text(name)});
}

void SMIEventServices::publishKeyValueEvent(int channel, EMP_TYPE_e type, const char* eventText,
                                            String keyValues, Uint8 severity, int line,
                                            const char* operation, const char* file) {
    note(Entry::Event, eventText);
    const std::lock_guard lock(mutex);
    script.events.push_back(
        {channel, type, eventText, text(keyValues), severity, line, operation, file});
}

} // namespace Pegasus
