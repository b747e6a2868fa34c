#include "array/model/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace array {

namespace {

constexpr bool isHigh(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isLow(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}
constexpr bool isContinuation(char byte) {
    return (byte & 0xC0) == 0x80;
}

void append(std::string& out, char32_t c) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(byte); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

// A lead byte's form: how it is known, how many bytes follow, and the least value that needs them.
struct Form {
    std::uint8_t mask, lead;
    std::size_t following;
    char32_t least;
};
constexpr std::array<Form, 4> forms = {
    {{0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}}};

struct Character {
    char32_t value;
    std::size_t length; // 0: there is no well-formed one
};

// The character at the start of a text.
Character characterAt(std::string_view text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    for (const Form& form : forms) {
        if ((first & form.mask) != form.lead) {
            continue;
        }
        if (text.size() <= form.following) {
            return {};
        }
        char32_t c = first & static_cast<std::uint8_t>(~form.mask);
        for (std::size_t i = 1; i <= form.following; ++i) {
            if (!isContinuation(text[i])) {
                return {};
            }
            c = (c << 6) | (static_cast<char32_t>(text[i]) & 0x3F);
        }
        const bool isCharacter = c >= form.least && c <= 0x10FFFF && !isHigh(c) && !isLow(c);
        return isCharacter ? Character{c, form.following + 1} : Character{};
    }
    return {};
}

// First and last.
struct Range {
    char32_t first, last;
};
constexpr std::array<Range, 13> hidden = {{{0x00AD, 0x00AD},
                                           {0x034F, 0x034F},
                                           {0x061C, 0x061C},
                                           {0x115F, 0x1160},
                                           {0x1806, 0x1806},
                                           {0x180B, 0x180F},
                                           {0x200B, 0x200F},
                                           {0x2028, 0x202E},
                                           {0x2060, 0x206F},
                                           {0xFE00, 0xFE0F},
                                           {0xFEFF, 0xFEFF},
                                           {0xFFF9, 0xFFFB},
                                           {0xE0000, 0xE0FFF}}};

bool isHidden(char32_t c) {
    return std::ranges::any_of(
        hidden, [c](const Range& range) { return range.first <= c && c <= range.last; });
}

void appendHex(std::string& out, const char* prefix, char32_t value, int digits) {
    out += prefix;
    while (digits-- > 0) {
        out += "0123456789ABCDEF"[value >> (4 * digits) & 0xF];
    }
}

void appendEscaped(std::string& out, char32_t c) {
    if (c < 0x10000) {
        appendHex(out, "\\u", c, 4);
    } else { // as JSON has it
        appendHex(out, "\\u", 0xD800 + ((c - 0x10000) >> 10), 4);
        appendHex(out, "\\u", 0xDC00 + ((c - 0x10000) & 0x3FF), 4);
    }
}

} // namespace

std::string toUtf8(const Pegasus::String& text) {
    const Pegasus::Char16* units = text.getChar16Data();
    // Nearly every text is ASCII, and this is done for each record that is read.
    const auto* end = std::find_if(units, units + text.size(), [](const Pegasus::Char16& unit) {
        return Pegasus::Uint16(unit) >= 0x80;
    });
    const auto ascii = static_cast<Pegasus::Uint32>(end - units);
    std::string out(ascii, '\0');
    std::transform(units, end, out.begin(), [](const Pegasus::Char16& unit) {
        return static_cast<char>(Pegasus::Uint16(unit));
    });
    for (Pegasus::Uint32 i = ascii; i < text.size(); ++i) {
        char32_t c = Pegasus::Uint16(units[i]);
        if (isHigh(c) && i + 1 < text.size() && isLow(Pegasus::Uint16(units[i + 1]))) {
            ++i;
            c = 0x10000 + ((c - 0xD800) << 10) + (Pegasus::Uint16(units[i]) - 0xDC00U);
        }
        append(out, c);
    }
    return out;
}

Pegasus::String fromUtf8(std::string_view text) {
    return Pegasus::String(text.data() ? text.data() : "",
                           static_cast<Pegasus::Uint32>(text.size()));
}

std::string hexTextOf(const Pegasus::String& key) {
    constexpr const char* digits = "0123456789ABCDEF";
    std::string text;
    const Pegasus::Char16* bytes = key.getChar16Data();
    for (Pegasus::Uint32 i = 0; i < key.size(); ++i) {
        const Pegasus::Uint16 byte = bytes[i];
        if (byte > 0xFF) {
            return {};
        }
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = characterAt(text).length;
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

bool hasHidden(std::string_view text) {
    while (!text.empty()) {
        const auto [c, length] = characterAt(text);
        if (length != 0 && isHidden(c)) {
            return true;
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return false;
}

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const auto [c, length] = characterAt(text);
        if (length == 0) {
            appendHex(out, "\\x", static_cast<std::uint8_t>(text.front()), 2);
        } else if ((c != '\n' && (c < 0x20 || (c >= 0x7F && c < 0xA0))) || isHidden(c)) {
            appendEscaped(out, c);
        } else {
            out += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return out;
}

std::size_t beginningAtEnd(std::string_view text) {
    for (std::size_t bytes = 1; bytes <= 3 && bytes <= text.size(); ++bytes) {
        const auto byte = static_cast<std::uint8_t>(text[text.size() - bytes]);
        if (isContinuation(static_cast<char>(byte))) {
            continue;
        }
        const auto form = std::ranges::find_if(
            forms, [byte](const Form& one) { return (byte & one.mask) == one.lead; });
        return form != forms.end() && form->following >= bytes ? bytes : 0;
    }
    return 0;
}

std::string quoted(std::string_view text) {
    constexpr std::size_t limit = 256; // an iSCSI name is shown whole
    std::string out = "\"";
    for (const char c : text.substr(0, limit)) {
        out += c >= 0x20 && c < 0x7F ? c : '?';
    }
    return out + (text.size() > limit ? "...\"" : "\"");
}

} // namespace array
