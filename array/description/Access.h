#ifndef ARRAY_DESCRIPTION_ACCESS_H
#define ARRAY_DESCRIPTION_ACCESS_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace array::description {

// How people write what a logical unit allows, as DRAVLogicalUnit::readOnly: "rw" 0, "ro" 1, "none"
// anything else.
std::string_view accessText(std::uint32_t access);

// And back, "none" as 2; nothing for another text.
std::optional<std::uint32_t> accessFromText(std::string_view text);

} // namespace array::description

#endif
