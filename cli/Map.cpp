#include "cli/Map.h"

#include <ostream>

#include "array/model/Ids.h"
#include "cli/Listing.h"
#include "cli/Quantities.h"
#include "cli/Tree.h"

namespace cli {

namespace {

using array::Id;
using array::Snapshot;

Json volumeMap(const Snapshot& array, Id id) {
    const array::Volume& volume = *array.volume(id);
    return {{"key", array::keyText(id)},
            {"name", volume.name},
            {"elementName", volume.elementName},
            {"size", volume.size}};
}

Json targetMap(const Snapshot& array, Id id) {
    const array::Target& target = *array.target(id);
    const auto units = array.associated(id, Pegasus::CLASSID_LOGICAL_UNIT);
    return {{"key", array::keyText(id)},
            {"name", target.name},
            {"secretSet", !target.secret.empty()},
            {"units", unitListing(array, units).toJson()}};
}

Json sessionsMap(const Snapshot& array, Id host, Id target) {
    auto sessions = array.associated(host, Pegasus::CLASSID_ISCSI_SESSION);
    std::erase_if(sessions, [&](Id id) { return array.session(id)->target != target; });
    return sessionListing(array, sessions).toJson();
}

Json hostMap(const Snapshot& array, Id id) {
    const array::Initiator& host = *array.initiator(id);
    Json targets = Json::array();
    array.forEachAssociated(id, Pegasus::CLASSID_TARGET, [&](Id target) {
        Json map = targetMap(array, target);
        map["sessions"] = sessionsMap(array, id, target);
        targets.push_back(std::move(map));
    });
    return {{"key", array::keyText(id)},
            {"name", host.name},
            {"secretSet", !host.secret.empty()},
            {"targets", std::move(targets)}};
}

} // namespace

Json mapOf(const Snapshot& array) {
    Json map = {{"system", array.names().system},       {"host", array.names().host},
                {"endpoints", Json::array()},           {"hosts", Json::array()},
                {"targetsWithoutHosts", Json::array()}, {"volumesWithoutUnits", Json::array()}};
    array.forEach(Pegasus::CLASSID_TCP_ENDPOINT,
                  [&](Id id) { map["endpoints"].push_back(portalText(*array.endpoint(id))); });
    array.forEach(Pegasus::CLASSID_INITIATOR,
                  [&](Id id) { map["hosts"].push_back(hostMap(array, id)); });
    array.forEach(Pegasus::CLASSID_TARGET, [&](Id id) {
        if (array.countAssociated(id, Pegasus::CLASSID_INITIATOR) == 0) {
            map["targetsWithoutHosts"].push_back(targetMap(array, id));
        }
    });
    array.forEach(Pegasus::CLASSID_VOLUME, [&](Id id) {
        if (array.countAssociated(id, Pegasus::CLASSID_LOGICAL_UNIT) == 0) {
            map["volumesWithoutUnits"].push_back(volumeMap(array, id));
        }
    });
    return map;
}

namespace {

std::string textOf(const Json& object, const char* member) {
    return plainText(object[member]);
}

std::string secretOf(const Json& object) {
    return "secret " + setText(object["secretSet"]);
}

std::vector<Branch> branches(const Json& list, Branch (*branchOf)(const Json&)) {
    std::vector<Branch> result;
    for (const Json& element : list) {
        result.push_back(branchOf(element));
    }
    return result;
}

Branch unitBranch(const Json& unit) {
    return {{"LUN " + textOf(unit, "lun"), textOf(unit, "access"), unitSizeText(unit["size"]),
             textOf(unit, "volume"), textOf(unit, "elementName")},
            {}};
}

Branch volumeBranch(const Json& volume) {
    return {{bytesText(volume["size"]), textOf(volume, "name"), textOf(volume, "elementName")}, {}};
}

std::string sessionsOf(const Json& target) {
    const auto sessions = target.find("sessions");
    if (sessions == target.end()) {
        return "";
    }
    if (sessions->empty()) {
        return "not logged in";
    }
    Json portals = Json::array();
    for (const Json& session : *sessions) {
        for (const Json& portal : session["connections"]) {
            portals.push_back(portal);
        }
    }
    return counted(sessions->size(), "session") + " through " + plainText(portals);
}

Branch targetBranch(const Json& target) {
    Branch branch{{textOf(target, "name"), secretOf(target), sessionsOf(target)},
                  branches(target["units"], unitBranch)};
    if (branch.children.empty()) {
        branch.children.push_back({{"no logical units"}, {}});
    }
    return branch;
}

Branch hostBranch(const Json& host) {
    Branch branch{{textOf(host, "name"), secretOf(host)}, branches(host["targets"], targetBranch)};
    if (branch.children.empty()) {
        branch.children.push_back({{"no targets"}, {}});
    }
    return branch;
}

void drawPart(std::ostream& out, const char* title, const std::vector<Branch>& part) {
    if (!part.empty()) {
        drawTree(out << '\n', {{{title}, part}});
    }
}

} // namespace

void drawMap(std::ostream& out, const Json& map) {
    out << "Array " << textOf(map, "system") << " on " << textOf(map, "host") << '\n';
    drawPart(out, "Endpoints", branches(map["endpoints"], [](const Json& portal) {
                 return Branch{{plainText(portal)}, {}};
             }));
    drawPart(out, "Hosts", branches(map["hosts"], hostBranch));
    drawPart(out, "Targets that no host may reach",
             branches(map["targetsWithoutHosts"], targetBranch));
    drawPart(out, "Volumes under no target", branches(map["volumesWithoutUnits"], volumeBranch));
}

} // namespace cli
