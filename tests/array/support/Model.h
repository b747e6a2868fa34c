#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "array/model/Snapshot.h"

namespace array {

// What a change came to: no value if it was refused, the id of what it made, else 0.
using Outcome = std::optional<Id>;

// An array as simple as can be, to compare the real one with.
struct Model {
    struct Unit {
        Id target;
        std::uint32_t lun;
        Id volume;
        std::string volumeName;
        bool operator==(const Unit&) const = default;
    };
    struct Host {
        std::string name;
        std::string secret;
        bool operator==(const Host&) const = default;
    };

    std::map<Id, std::string> targets, volumes; // names
    std::map<Id, Host> initiators;
    std::map<Id, Unit> units;
    std::set<std::pair<Id, Id>> grants;             // target, initiator
    std::map<Id, std::pair<Id, Id>> sessions;       // target, initiator
    std::map<std::uint32_t, std::uint32_t> serials; // the last of each class

    Outcome createTarget(const std::string& name);
    Outcome createInitiator(const std::string& name, const std::string& secret);
    Outcome createVolume(const std::string& name);
    Outcome createUnit(Id target, std::uint32_t lun, Id volume);
    Outcome createSession(Id target, Id initiator);
    Outcome setSecret(Id initiator, const std::string& secret);
    Outcome grant(Id target, Id initiator);
    Outcome revoke(Id target, Id initiator);
    Outcome removeTarget(Id target);
    Outcome removeInitiator(Id initiator);
    Outcome removeVolume(Id volume);
    Outcome removeUnit(Id unit);
    Outcome removeSession(Id session);

    // The objects of a snapshot; the last serials are not to be seen in it and stay empty.
    static Model of(const Snapshot& snapshot);
    bool hasObjectsOf(const Model& other) const;

private:
    Id newId(CLASSID_e objectClass);
};

} // namespace array
