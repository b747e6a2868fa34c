#include <ostream>

#include "cli/Listings.h"
#include "cli/Map.h"
#include "cli/Tree.h"
#include "cli/Units.h"

namespace cli {

namespace {

std::string textOf(const Json& object, const char* member) {
    return plainText(object[member]);
}

std::string secretOf(const Json& object) {
    return "secret " + setText(object["secretSet"]);
}

std::vector<Branch> branches(const Json& list, Branch (*branchOf)(const Json&)) {
    std::vector<Branch> result;
    for (const Json& element : list)
        result.push_back(branchOf(element));
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
    if (sessions == target.end())
        return "";
    if (sessions->empty())
        return "not logged in";
    Json portals = Json::array();
    for (const Json& session : *sessions)
        for (const Json& portal : session["connections"])
            portals.push_back(portal);
    return counted(sessions->size(), "session") + " through " + plainText(portals);
}

Branch targetBranch(const Json& target) {
    Branch branch{{textOf(target, "name"), secretOf(target), sessionsOf(target)},
                  branches(target["units"], unitBranch)};
    if (branch.children.empty())
        branch.children.push_back({{"no logical units"}, {}});
    return branch;
}

Branch hostBranch(const Json& host) {
    Branch branch{{textOf(host, "name"), secretOf(host)}, branches(host["targets"], targetBranch)};
    if (branch.children.empty())
        branch.children.push_back({{"no targets"}, {}});
    return branch;
}

void drawPart(std::ostream& out, const char* title, const std::vector<Branch>& part) {
    if (!part.empty())
        drawTree(out << '\n', {{{title}, part}});
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
