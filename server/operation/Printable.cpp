#include "server/operation/Printable.h"

#include <algorithm>

#include <Pegasus/Common/Utf.h>
#include <fmt/format.h>

namespace smisd {
namespace {

using Pegasus::Uint32;

struct Range {
    Uint32 first;
    Uint32 last;
};
constexpr Range escaped[] = {{0, 0x1F},        {0x7F, 0x9F},     {0x61C, 0x61C},
                             {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

bool isEscaped(Uint32 character) {
    return std::any_of(std::begin(escaped), std::end(escaped), [&](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

} // namespace

std::string printable(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; })) {
        return std::string(text); // most are so
    }
    std::string out;
    const auto* at = reinterpret_cast<const unsigned char*>(text.data());
    const auto* const end = at + text.size();
    while (at != end) {
        const auto* const start = at;
        const Uint32 character = Pegasus::Utf::readUtf8(at, end);
        if (character == Pegasus::Utf::malformed || Pegasus::Utf::isSurrogate(character)) {
            out += "\xEF\xBF\xBD";
            at = start + 1;
        } else if (isEscaped(character)) {
            out += fmt::format("\\u{:04X}", character);
        } else {
            out.append(start, at);
        }
    }
    return out;
}

} // namespace smisd
