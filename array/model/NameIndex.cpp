#include "array/model/NameIndex.h"

#include <algorithm>

#include "array/model/Text.h"

namespace array {

bool sameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

std::uint32_t hashOfName(std::string_view name) {
    // FNV-1a, and a last mix because the index looks at the high bits first.
    std::uint32_t hash = 2166136261U;
    for (const char c : name) {
        hash = (hash ^ static_cast<std::uint8_t>(lower(c))) * 16777619U;
    }
    hash = (hash ^ (hash >> 16)) * 0x85EBCA6BU;
    return hash ^ (hash >> 13);
}

} // namespace array
