#include "array/description/Form.h"

#include <algorithm>
#include <limits>

namespace array::description {

namespace {

constexpr std::uint64_t anyNumber = std::numeric_limits<std::uint64_t>::max();

constexpr Member text(std::string_view name, Presence presence = Presence::Required) {
    return {name, Kind::Text, presence};
}

constexpr Member number(std::string_view name, std::uint64_t limit) {
    return {name, Kind::Number, Presence::Required, limit};
}

constexpr Member list(std::string_view name, const Form& elements, Presence presence) {
    return {name, Kind::List, presence, 0, &elements};
}

constexpr Member endpointMembers[] = {
    text("address"),
    number("port", std::numeric_limits<std::uint16_t>::max()),
};
constexpr Member volumeMembers[] = {
    text("name"),
    text("elementName", Presence::Optional),
    number("size", anyNumber),
};
constexpr Member nodeMembers[] = {
    text("name"),
    text("secret", Presence::Optional),
};
constexpr Member grantMembers[] = {
    text("target"),
    text("initiator"),
};
constexpr Member logicalUnitMembers[] = {
    text("target"),
    text("volume"),
    number("lun", std::numeric_limits<std::uint32_t>::max()),
    text("access"),
};
constexpr Member connectionMembers[] = {
    number("endpoint", anyNumber),
};

constexpr Form endpointForm{endpointMembers};
constexpr Form volumeForm{volumeMembers};
constexpr Form nodeForm{nodeMembers};
constexpr Form grantForm{grantMembers};
constexpr Form logicalUnitForm{logicalUnitMembers};
constexpr Form connectionForm{connectionMembers};

constexpr Member sessionMembers[] = {
    text("target"),
    text("initiator"),
    list("connections", connectionForm, Presence::Required),
};
constexpr Form sessionForm{sessionMembers};

constexpr Member documentMembers[] = {
    text("host"),
    text("system"),
    list("endpoints", endpointForm, Presence::Optional),
    list("volumes", volumeForm, Presence::Optional),
    list("targets", nodeForm, Presence::Optional),
    list("initiators", nodeForm, Presence::Optional),
    list("grants", grantForm, Presence::Optional),
    list("logicalUnits", logicalUnitForm, Presence::Optional),
    list("sessions", sessionForm, Presence::Optional),
};

template<typename Entry>
void deliver(const nlohmann::json& entry, Receiver& receiver) {
    receiver.add(entry.get<Entry>());
}

enum : std::uint32_t { Endpoints = 1, Volumes = 2, Targets = 4, Initiators = 8, Grants = 16 };

constexpr Section sectionTable[] = {
    {"endpoints", &endpointForm, 0, deliver<EndpointEntry>},
    {"volumes", &volumeForm, 0, deliver<VolumeEntry>},
    {"targets", &nodeForm, 0, deliver<TargetEntry>},
    {"initiators", &nodeForm, 0, deliver<InitiatorEntry>},
    {"grants", &grantForm, Targets | Initiators, deliver<GrantEntry>},
    {"logicalUnits", &logicalUnitForm, Targets | Volumes, deliver<LogicalUnitEntry>},
    {"sessions", &sessionForm, Endpoints | Targets | Initiators | Grants, deliver<SessionEntry>},
};

} // namespace

const Form documentForm{documentMembers};
const std::span<const Section> sections{sectionTable};

std::size_t sectionIndex(std::string_view name) {
    const auto section = std::ranges::find(sections, name, &Section::name);
    return static_cast<std::size_t>(section - sections.begin());
}

} // namespace array::description
