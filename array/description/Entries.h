#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

namespace array::description {

// How people write what a logical unit allows, as DRAVLogicalUnit::readOnly: "rw" 0, "ro" 1, "none"
// anything else.
std::string_view accessText(std::uint32_t access);

// And back, "none" as 2; nothing for another text.
std::optional<std::uint32_t> accessFromText(std::string_view text);

// The entries of a description's sections, as they stand in the file: objects are named by their
// own names, not by ids. docs/description.md describes the format.

struct EndpointEntry {
    std::string address;
    std::uint16_t port = 0;
};

struct VolumeEntry {
    std::string name;
    std::string elementName;
    std::uint64_t size = 0; // bytes
};

struct TargetEntry {
    std::string name;
    std::string secret;
};

struct InitiatorEntry {
    std::string name;
    std::string secret;
};

struct GrantEntry {
    std::string target;
    std::string initiator;
};

struct LogicalUnitEntry {
    std::string target;
    std::string volume;
    std::uint32_t lun = 0;
    std::string access;
};

struct ConnectionEntry {
    std::uint64_t endpoint = 0; // index into the section "endpoints"
};

struct SessionEntry {
    std::string target;
    std::string initiator;
    std::vector<ConnectionEntry> connections;
};

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(EndpointEntry, address, port)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(VolumeEntry, name, elementName, size)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(TargetEntry, name, secret)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(InitiatorEntry, name, secret)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(GrantEntry, target, initiator)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(LogicalUnitEntry, target, volume, lun, access)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(ConnectionEntry, endpoint)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE_WITH_DEFAULT(SessionEntry, target, initiator, connections)

} // namespace array::description
