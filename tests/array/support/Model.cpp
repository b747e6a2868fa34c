#include "tests/array/support/Model.h"

#include <algorithm>

#include "array/model/Ids.h"
#include "array/model/Rules.h"

namespace array {

using namespace Pegasus;

namespace {

constexpr Id done = 0;
constexpr Outcome refused = std::nullopt;

template<class Container, class Test>
bool any(const Container& container, Test test) {
    return std::any_of(container.begin(), container.end(), test);
}

} // namespace

Id Model::newId(CLASSID_e objectClass) {
    return makeId(objectClass, ++serials[objectClass]);
}

Outcome Model::createTarget(const std::string& name) {
    if (any(targets, [&](const auto& each) { return each.second == name; })) {
        return refused;
    }
    const Id id = newId(CLASSID_TARGET);
    targets[id] = name;
    return id;
}

Outcome Model::createInitiator(const std::string& name, const std::string& secret) {
    if (any(initiators, [&](const auto& each) { return each.second.name == name; })) {
        return refused;
    }
    const Id id = newId(CLASSID_INITIATOR);
    initiators[id] = {name, secret};
    return id;
}

Outcome Model::createVolume(const std::string& name) {
    if (any(volumes, [&](const auto& each) { return each.second == name; })) {
        return refused;
    }
    const Id id = newId(CLASSID_VOLUME);
    volumes[id] = name;
    return id;
}

Outcome Model::createUnit(Id target, std::uint32_t lun, Id volume) {
    if (!targets.count(target) || !volumes.count(volume) || lun >= lunLimit ||
        any(units, [&](const auto& each) {
            return each.second.target == target && each.second.lun == lun;
        })) {
        return refused;
    }
    const Id id = newId(CLASSID_LOGICAL_UNIT);
    units[id] = {target, lun, volume, {}};
    return id;
}

Outcome Model::createSession(Id target, Id initiator) {
    if (!grants.count({target, initiator})) {
        return refused;
    }
    const Id id = newId(CLASSID_ISCSI_SESSION);
    sessions[id] = {target, initiator};
    return id;
}

Outcome Model::setSecret(Id initiator, const std::string& secret) {
    if (!initiators.count(initiator)) {
        return refused;
    }
    initiators[initiator].secret = secret;
    return done;
}

Outcome Model::grant(Id target, Id initiator) {
    if (!targets.count(target) || !initiators.count(initiator)) {
        return refused;
    }
    grants.insert({target, initiator});
    return done;
}

Outcome Model::revoke(Id target, Id initiator) {
    if (!targets.count(target) || !initiators.count(initiator)) {
        return refused;
    }
    const std::pair both(target, initiator);
    grants.erase(both);
    std::erase_if(sessions, [&](const auto& each) { return each.second == both; });
    return done;
}

Outcome Model::removeTarget(Id target) {
    if (any(units, [&](const auto& each) { return each.second.target == target; }) ||
        any(sessions, [&](const auto& each) { return each.second.first == target; }) ||
        targets.erase(target) == 0) {
        return refused;
    }
    std::erase_if(grants, [&](const auto& each) { return each.first == target; });
    return done;
}

Outcome Model::removeInitiator(Id initiator) {
    if (initiators.erase(initiator) == 0) {
        return refused;
    }
    std::erase_if(grants, [&](const auto& each) { return each.second == initiator; });
    std::erase_if(sessions, [&](const auto& each) { return each.second.second == initiator; });
    return done;
}

Outcome Model::removeVolume(Id volume) {
    const auto found = volumes.find(volume);
    if (found == volumes.end()) {
        return refused;
    }
    for (auto& [id, unit] : units) {
        if (unit.volume == volume) {
            unit = {unit.target, unit.lun, 0, found->second};
        }
    }
    volumes.erase(found);
    return done;
}

Outcome Model::removeUnit(Id unit) {
    return units.erase(unit) != 0 ? Outcome(done) : refused;
}

Outcome Model::removeSession(Id session) {
    return sessions.erase(session) != 0 ? Outcome(done) : refused;
}

Model Model::of(const Snapshot& snapshot) {
    Model model;
    for (const Id id : snapshot.ids(CLASSID_TARGET)) {
        model.targets[id] = snapshot.target(id)->name;
        for (const Id initiator : snapshot.associated(id, CLASSID_INITIATOR)) {
            model.grants.insert({id, initiator});
        }
    }
    for (const Id id : snapshot.ids(CLASSID_VOLUME)) {
        model.volumes[id] = snapshot.volume(id)->name;
    }
    for (const Id id : snapshot.ids(CLASSID_INITIATOR)) {
        model.initiators[id] = {snapshot.initiator(id)->name, snapshot.initiator(id)->secret};
    }
    for (const Id id : snapshot.ids(CLASSID_LOGICAL_UNIT)) {
        const LogicalUnit& unit = *snapshot.logicalUnit(id);
        model.units[id] = {unit.target, unit.lun, unit.volume, unit.volumeName};
    }
    for (const Id id : snapshot.ids(CLASSID_ISCSI_SESSION)) {
        model.sessions[id] = {snapshot.session(id)->target, snapshot.session(id)->initiator};
    }
    return model;
}

bool Model::hasObjectsOf(const Model& other) const {
    return targets == other.targets && volumes == other.volumes && initiators == other.initiators &&
           units == other.units && grants == other.grants && sessions == other.sessions;
}

} // namespace array
