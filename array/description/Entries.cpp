#include "array/description/Entries.h"

#include <algorithm>
#include <array>

namespace array::description {

namespace {

constexpr std::array<std::string_view, 3> texts = {"rw", "ro", "none"};

}

std::string_view accessText(std::uint32_t access) {
    return texts[std::min<std::size_t>(access, texts.size() - 1)];
}

std::optional<std::uint32_t> accessFromText(std::string_view text) {
    const auto found = std::ranges::find(texts, text);
    if (found == texts.end()) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(found - texts.begin());
}

} // namespace array::description
