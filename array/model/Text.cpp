#include "array/model/Text.h"

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

// The length of the well-formed character at the start of a text; 0 if there is none.
std::size_t characterAt(std::string_view text) {
    const auto first = static_cast<std::uint8_t>(text.front());
    for (const Form& form : forms) {
        if ((first & form.mask) != form.lead) {
            continue;
        }
        if (text.size() <= form.following) {
            return 0;
        }
        char32_t c = first & static_cast<std::uint8_t>(~form.mask);
        for (std::size_t i = 1; i <= form.following; ++i) {
            if (!isContinuation(text[i])) {
                return 0;
            }
            c = (c << 6) | (static_cast<char32_t>(text[i]) & 0x3F);
        }
        const bool isCharacter = c >= form.least && c <= 0x10FFFF && !isHigh(c) && !isLow(c);
        return isCharacter ? form.following + 1 : 0;
    }
    return 0;
}

} // namespace

std::string toUtf8(const Pegasus::String& text) {
    std::string out;
    out.reserve(text.size());
    const Pegasus::Char16* units = text.getChar16Data();
    for (Pegasus::Uint32 i = 0; i < text.size(); ++i) {
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
        const std::size_t length = characterAt(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
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
