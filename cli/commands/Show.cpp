#include <ostream>

#include "array/model/Ids.h"
#include "cli/Listing.h"
#include "cli/Quantities.h"
#include "cli/Tree.h"
#include "cli/commands/Commands.h"

// The whole array as hosts see it: each host (an initiator) with the targets that it may reach,
// their logical units and its sessions; then the targets that no host may reach, and the volumes
// under no target. Tells of secrets only whether they are set.

namespace cli {

namespace {

using array::Id;
using array::Snapshot;

Json volumeMap(const Snapshot& snapshot, Id id) {
    const array::Volume& volume = *snapshot.volume(id);
    return {{"key", array::keyText(id)},
            {"name", volume.name},
            {"elementName", volume.elementName},
            {"size", volume.size}};
}

Json targetMap(const Snapshot& snapshot, Id id) {
    const array::Target& target = *snapshot.target(id);
    const auto units = snapshot.associated(id, Pegasus::CLASSID_LOGICAL_UNIT);
    return {{"key", array::keyText(id)},
            {"name", target.name},
            {"secretSet", !target.secret.empty()},
            {"units", unitListing(snapshot, units).toJson()}};
}

Json sessionsMap(const Snapshot& snapshot, Id host, Id target) {
    auto sessions = snapshot.associated(host, Pegasus::CLASSID_ISCSI_SESSION);
    std::erase_if(sessions, [&](Id id) { return snapshot.session(id)->target != target; });
    return sessionListing(snapshot, sessions).toJson();
}

Json hostMap(const Snapshot& snapshot, Id id) {
    const array::Initiator& host = *snapshot.initiator(id);
    Json targets = Json::array();
    snapshot.forEachAssociated(id, Pegasus::CLASSID_TARGET, [&](Id target) {
        Json map = targetMap(snapshot, target);
        map["sessions"] = sessionsMap(snapshot, id, target);
        targets.push_back(std::move(map));
    });
    return {{"key", array::keyText(id)},
            {"name", host.name},
            {"secretSet", !host.secret.empty()},
            {"targets", std::move(targets)}};
}

Json mapOf(const Snapshot& snapshot) {
    Json map = {{"system", snapshot.names().system},    {"host", snapshot.names().host},
                {"endpoints", Json::array()},           {"hosts", Json::array()},
                {"targetsWithoutHosts", Json::array()}, {"volumesWithoutUnits", Json::array()}};
    snapshot.forEach(Pegasus::CLASSID_TCP_ENDPOINT, [&](Id id) {
        map["endpoints"].push_back(portalText(*snapshot.endpoint(id)));
    });
    snapshot.forEach(Pegasus::CLASSID_INITIATOR,
                     [&](Id id) { map["hosts"].push_back(hostMap(snapshot, id)); });
    snapshot.forEach(Pegasus::CLASSID_TARGET, [&](Id id) {
        if (snapshot.countAssociated(id, Pegasus::CLASSID_INITIATOR) == 0) {
            map["targetsWithoutHosts"].push_back(targetMap(snapshot, id));
        }
    });
    snapshot.forEach(Pegasus::CLASSID_VOLUME, [&](Id id) {
        if (snapshot.countAssociated(id, Pegasus::CLASSID_LOGICAL_UNIT) == 0) {
            map["volumesWithoutUnits"].push_back(volumeMap(snapshot, id));
        }
    });
    return map;
}

// From here on the map is drawn.

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

struct Show : NoArguments {
    static void run(Context& context) {
        const Json map = mapOf(*context.array().snapshot());
        if (context.json) {
            printJson(context.out, map);
        } else {
            drawMap(context.out, map);
        }
    }
};

} // namespace

void addShowCommand(CLI::App& app, Context& context) {
    add<Show>(app, context, "show", "Draw hosts, their targets and volumes, and sessions");
}

} // namespace cli
