#include "array/model/Snapshot.h"

#include "array/model/ErrorCode.h"
#include "array/model/ISCSIName.h"
#include "array/model/Ids.h"
#include "array/model/SnapshotContents.h"
#include "array/model/Text.h"

namespace array {

namespace {

using Contents = Snapshot::Contents;

// The classes listed under the root ids.
struct Root {
    Id root;
    CLASSID_e listed;
};
constexpr Root roots[] = {
    {Pegasus::SESSION_ROOT_OBJECT_ID, Pegasus::CLASSID_INITIATOR},
    {Pegasus::SESSION_ROOT_OBJECT_ID, Pegasus::CLASSID_ISCSI_SESSION},
    {Pegasus::SESSION_ROOT_OBJECT_ID, Pegasus::CLASSID_ISCSI_CONNECTION},
    {Pegasus::SYSTEM_OBJECT_ID, Pegasus::CLASSID_TARGET},
    {Pegasus::SYSTEM_OBJECT_ID, Pegasus::CLASSID_TCP_ENDPOINT},
};

// The lists that objects have.
struct Relation {
    CLASSID_e owner;
    CLASSID_e member;
    Association Contents::*members;
};
constexpr Relation relations[] = {
    {Pegasus::CLASSID_TARGET, Pegasus::CLASSID_INITIATOR, &Contents::initiatorsOfTarget},
    {Pegasus::CLASSID_INITIATOR, Pegasus::CLASSID_TARGET, &Contents::targetsOfInitiator},
    {Pegasus::CLASSID_TARGET, Pegasus::CLASSID_LOGICAL_UNIT, &Contents::unitsOfTarget},
    {Pegasus::CLASSID_VOLUME, Pegasus::CLASSID_LOGICAL_UNIT, &Contents::unitsOfVolume},
    {Pegasus::CLASSID_TARGET, Pegasus::CLASSID_ISCSI_SESSION, &Contents::sessionsOfTarget},
    {Pegasus::CLASSID_INITIATOR, Pegasus::CLASSID_ISCSI_SESSION, &Contents::sessionsOfInitiator},
    {Pegasus::CLASSID_ISCSI_SESSION, Pegasus::CLASSID_ISCSI_CONNECTION,
     &Contents::connectionsOfSession},
    {Pegasus::CLASSID_TCP_ENDPOINT, Pegasus::CLASSID_ISCSI_CONNECTION,
     &Contents::connectionsOfEndpoint},
};

bool isListed(Id root, CLASSID_e objectClass) {
    for (const Root& row : roots) {
        if (row.root == root && row.listed == objectClass) {
            return true;
        }
    }
    return false;
}

const PersistentSet& membersOf(const Contents& contents, Id owner, CLASSID_e objectClass) {
    static const PersistentSet none;
    for (const Relation& row : relations) {
        if (row.owner == classOf(owner) && row.member == objectClass) {
            return (contents.*row.members).of(owner);
        }
    }
    return none;
}

// The settings of a class that a target has; 0 if there is no such target or class.
Id settingsOf(const Contents& contents, Id target, CLASSID_e settingsClass) {
    const bool isSettings = settingsClass == Pegasus::CLASSID_SESSION_SETTINGS ||
                            settingsClass == Pegasus::CLASSID_CONNECTION_SETTINGS;
    return isSettings && contents.find<Target>(target) ? makeId(settingsClass, serialOf(target))
                                                       : 0;
}

template<class Record, class Visit>
void forEachOf(const Contents& contents, const Visit& visit) {
    contents.table<Record>().forEach([&](std::uint32_t serial, const Shared<Record>&) {
        visit(makeId(classOfRecord<Record>, serial));
    });
}

} // namespace

Snapshot::Snapshot(Contents contents)
    : _contents(std::make_unique<Contents>(std::move(contents))) {}
Snapshot::Snapshot(const Snapshot& other)
    : _contents(std::make_unique<Contents>(*other._contents)) {}
Snapshot::Snapshot(Snapshot&&) noexcept = default;
Snapshot::~Snapshot() = default;
Snapshot& Snapshot::operator=(Snapshot&&) noexcept = default;

std::uint64_t Snapshot::version() const {
    return _contents->version;
}
const ArrayNames& Snapshot::names() const {
    return *_contents->names;
}

const Endpoint* Snapshot::endpoint(Id id) const {
    return _contents->find<Endpoint>(id);
}
const Initiator* Snapshot::initiator(Id id) const {
    return _contents->find<Initiator>(id);
}
const Target* Snapshot::target(Id id) const {
    return _contents->find<Target>(id);
}
const LogicalUnit* Snapshot::logicalUnit(Id id) const {
    return _contents->find<LogicalUnit>(id);
}
const Volume* Snapshot::volume(Id id) const {
    return _contents->find<Volume>(id);
}
const Session* Snapshot::session(Id id) const {
    return _contents->find<Session>(id);
}
const Connection* Snapshot::connection(Id id) const {
    return _contents->find<Connection>(id);
}
const SessionParameters* Snapshot::sessionSettings(Id id) const {
    return _contents->find<SessionParameters>(id);
}
const ConnectionParameters* Snapshot::connectionSettings(Id id) const {
    return _contents->find<ConnectionParameters>(id);
}

bool Snapshot::exists(Id id) const {
    bool found = false;
    forRecordTypeOf(classOf(id), [&]<class Record>(std::type_identity<Record>) {
        found = _contents->find<Record>(id) != nullptr;
    });
    return found;
}

LoginStatistics Snapshot::loginStatistics(Id target) const {
    return _contents->statisticsOf<LoginStatistics>(target);
}
SessionFailures Snapshot::sessionFailures(Id target) const {
    return _contents->statisticsOf<SessionFailures>(target);
}
SessionStatistics Snapshot::sessionStatistics(Id session) const {
    return _contents->statisticsOf<SessionStatistics>(session);
}
InterfaceStatistics Snapshot::interfaceStatistics(Id endpoint) const {
    return _contents->statisticsOf<InterfaceStatistics>(endpoint);
}

namespace {

// By a name as it is kept, or as a client may write it. An array made earlier may keep others.
template<class Record>
Id byISCSIName(const Contents& contents, std::string_view name) {
    const Id id = contents.byName<Record>(name);
    return id != 0 || all(name, isAscii) ? id
                                         : contents.byName<Record>(prepareISCSIName(name).name);
}

} // namespace

Id Snapshot::initiatorByName(std::string_view iSCSIName) const {
    return byISCSIName<Initiator>(*_contents, iSCSIName);
}
Id Snapshot::targetByName(std::string_view iSCSIName) const {
    return byISCSIName<Target>(*_contents, iSCSIName);
}
Id Snapshot::volumeByName(std::string_view hexText) const {
    return _contents->byName<Volume>(hexText);
}
Id Snapshot::endpointByPortal(std::string_view address, std::uint16_t port) const {
    return _contents->byName<Endpoint>(indexedName(Endpoint{std::string(address), port}));
}

Id Snapshot::unitByLun(Id target, std::uint32_t lun) const {
    const PersistentMap<Id>* units = _contents->unitsByLun.find(target);
    const Id* unit = units ? units->find(lun) : nullptr;
    return unit ? *unit : 0;
}

std::string_view Snapshot::volumeNameOf(Id unit) const {
    const LogicalUnit* record = logicalUnit(unit);
    if (!record) {
        return {};
    }
    const Volume* there = volume(record->volume);
    return there ? there->name : record->volumeName;
}

bool Snapshot::granted(Id target, Id initiator) const {
    return _contents->initiatorsOfTarget.of(target).contains(initiator);
}

Id Snapshot::sessionSettingsOf(Id target) const {
    return settingsOf(*_contents, target, Pegasus::CLASSID_SESSION_SETTINGS);
}
Id Snapshot::connectionSettingsOf(Id target) const {
    return settingsOf(*_contents, target, Pegasus::CLASSID_CONNECTION_SETTINGS);
}
Id Snapshot::targetOfSettings(Id settings) const {
    const Id target = makeId(Pegasus::CLASSID_TARGET, serialOf(settings));
    return settingsOf(*_contents, target, classOf(settings)) == settings ? target : 0;
}

std::size_t Snapshot::count(CLASSID_e objectClass) const {
    std::size_t size = 0;
    forRecordTypeOf(objectClass, [&]<class Record>(std::type_identity<Record>) {
        size = _contents->table<Record>().size();
    });
    return size;
}

void Snapshot::forEach(CLASSID_e objectClass, const std::function<void(Id)>& visit) const {
    forRecordTypeOf(objectClass, [&]<class Record>(std::type_identity<Record>) {
        forEachOf<Record>(*_contents, visit);
    });
}

std::vector<Id> Snapshot::ids(CLASSID_e objectClass) const {
    std::vector<Id> all;
    all.reserve(count(objectClass));
    forEach(objectClass, [&](Id id) { all.push_back(id); });
    return all;
}

std::size_t Snapshot::countAssociated(Id owner, CLASSID_e objectClass) const {
    if (isListed(owner, objectClass)) {
        return count(objectClass);
    }
    if (settingsOf(*_contents, owner, objectClass) != 0) {
        return 1;
    }
    return membersOf(*_contents, owner, objectClass).size();
}

void Snapshot::forEachAssociated(Id owner, CLASSID_e objectClass,
                                 const std::function<void(Id)>& visit) const {
    if (isListed(owner, objectClass)) {
        return forEach(objectClass, visit);
    }
    if (const Id settings = settingsOf(*_contents, owner, objectClass); settings != 0) {
        return visit(settings);
    }
    membersOf(*_contents, owner, objectClass).forEach([&](Id member, NoValue) { visit(member); });
}

std::vector<Id> Snapshot::associated(Id owner, CLASSID_e objectClass) const {
    std::vector<Id> all;
    all.reserve(countAssociated(owner, objectClass));
    forEachAssociated(owner, objectClass, [&](Id id) { all.push_back(id); });
    return all;
}

namespace {

struct ClassName {
    CLASSID_e objectClass;
    const char* name;
};

constexpr ClassName classNames[] = {
    {Pegasus::CLASSID_TCP_ENDPOINT, "endpoint"},
    {Pegasus::CLASSID_INITIATOR, "initiator"},
    {Pegasus::CLASSID_TARGET, "target"},
    {Pegasus::CLASSID_LOGICAL_UNIT, "logical unit"},
    {Pegasus::CLASSID_ISCSI_CONNECTION, "connection"},
    {Pegasus::CLASSID_ISCSI_SESSION, "session"},
    {Pegasus::CLASSID_VOLUME, "volume"},
    {Pegasus::CLASSID_CONNECTION_SETTINGS, "connection setting"},
    {Pegasus::CLASSID_SESSION_SETTINGS, "session setting"},
};

} // namespace

const char* className(CLASSID_e objectClass) {
    for (const ClassName& row : classNames) {
        if (row.objectClass == objectClass) {
            return row.name;
        }
    }
    return "object";
}

void failNoSuchObject(const Snapshot& snapshot, Id id, CLASSID_e wanted) {
    if (snapshot.exists(id)) {
        fail(ErrorCode::WrongClass, keyText(id) + " is of the class " + className(classOf(id)) +
                                        ", and the class " + className(wanted) + " was asked for.");
    }
    fail(id == noKeyId ? ErrorCode::BadKeyText : ErrorCode::NoSuchObject,
         givenKey(id) + " names no object of the class " + className(wanted) + '.');
}

} // namespace array
