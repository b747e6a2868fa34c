#pragma once

#include "array/containers/PersistentMap.h"
#include "array/model/NameIndex.h"
#include "array/model/RecordTypes.h"
#include "array/model/Records.h"
#include "array/model/Snapshot.h"

namespace array {

// For each owner the ids associated with it, in ascending order.
class Association {
public:
    const PersistentSet& of(Id owner) const {
        static const PersistentSet none;
        const PersistentSet* members = _members.find(owner);
        return members ? *members : none;
    }

    void add(Id owner, Id member) { setIn(_members, owner, member, NoValue()); }
    void remove(Id owner, Id member) { eraseIn(_members, owner, member); }

private:
    PersistentMap<PersistentSet> _members;
};

// The objects of one record type, by indexedName().
template<class Record>
struct NamesOf {
    NameIndex index;
};

// What a snapshot consists of. A copy is cheap and shares everything with the original. The
// functions keep tables, associations and indexes in step; they know no rules, and expect that the
// objects named by a record are there.
struct Snapshot::Contents {
    std::uint64_t version = 0;
    Shared<ArrayNames> names = Shared<ArrayNames>::make();
    ForEachRecord<Table> objects;
    ForEachStatistics<Table> statistics;
    PersistentMap<std::uint32_t> lastSerials; // by class: the highest serial ever given

    Association initiatorsOfTarget, targetsOfInitiator; // grants
    Association unitsOfTarget, unitsOfVolume;
    Association sessionsOfTarget, sessionsOfInitiator;
    Association connectionsOfSession, connectionsOfEndpoint;
    PersistentMap<PersistentMap<Id>> unitsByLun; // target -> LUN -> unit
    std::tuple<NamesOf<Endpoint>, NamesOf<Initiator>, NamesOf<Target>, NamesOf<Volume>> nameIndexes;

    template<class Record>
    const Table<Record>& table() const {
        return std::get<Table<Record>>(objects);
    }

    // The record of an object; null if the id names no object of the class.
    template<class Record>
    const Record* find(Id id) const {
        if (classOf(id) != classOfRecord<Record>) {
            return nullptr;
        }
        const Shared<Record>* found = table<Record>().find(serialOf(id));
        return found ? found->get() : nullptr;
    }
    template<class Statistics>
    Statistics statisticsOf(Id owner) const {
        const Shared<Statistics>* found =
            classOf(owner) == ownerOfStatistics<Statistics>
                ? std::get<Table<Statistics>>(statistics).find(serialOf(owner))
                : nullptr;
        return found ? **found : Statistics();
    }

    // Makes an object, or replaces its record.
    template<class Record>
    void put(Id id, Record record);
    // Removes an object, if it is there, with its statistics.
    template<class Record>
    void erase(Id id);

    template<class Statistics>
    void putStatistics(Id owner, Statistics values) {
        std::get<Table<Statistics>>(statistics)
            .set(serialOf(owner), Shared<Statistics>::make(std::move(values)));
    }

    void grant(Id target, Id initiator);
    void revoke(Id target, Id initiator);

    std::uint32_t lastSerial(CLASSID_e objectClass) const;
    void serialUsed(Id id);

    // The object of an indexedName(), 0 if there is none.
    template<class Record>
    Id byName(std::string_view name) const;
};

// The next snapshot while it is made: it is read as a snapshot, and can be changed.
class SnapshotDraft : public Snapshot {
public:
    explicit SnapshotDraft(const Snapshot& from) : Snapshot(from) {}

    Contents& edit() { return *_contents; }
};

// The text by which an object is found and which no other object of its class has.
inline std::string_view indexedName(const Volume& volume) {
    return volume.name;
}
inline std::string_view indexedName(const Initiator& initiator) {
    return initiator.name;
}
inline std::string_view indexedName(const Target& target) {
    return target.name;
}
std::string indexedName(const Endpoint& endpoint);

template<class Record>
Id Snapshot::Contents::byName(std::string_view name) const {
    const NameIndex& index = std::get<NamesOf<Record>>(nameIndexes).index;
    const std::uint32_t serial = index.find(hashOfName(name), [&](std::uint32_t candidate) {
        return sameName(indexedName(**table<Record>().find(candidate)), name);
    });
    return serial != 0 ? makeId(classOfRecord<Record>, serial) : 0;
}

} // namespace array
