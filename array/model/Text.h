#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include <Pegasus/Common/String.h>

namespace array {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr bool isAscii(char c) {
    return (static_cast<unsigned char>(c) & 0x80) == 0;
}
constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// True if the test holds for every character.
template<class Test>
constexpr bool all(std::string_view text, Test test) {
    return std::all_of(text.begin(), text.end(), test);
}

// True for UTF-8 text with a control character in it: U+0000 to U+001F, U+007F to U+009F.
constexpr bool hasControls(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 || byte == 0x7F) {
            return true;
        }
        if (byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0) {
            return true;
        }
    }
    return false;
}

// Between the engine interface's texts and the array's. A surrogate without its partner becomes the
// three bytes that no valid UTF-8 has, so that the rules refuse it.
std::string toUtf8(const Pegasus::String& text);

// The bytes must be valid UTF-8, as everything is that the rules accepted; throws otherwise.
Pegasus::String fromUtf8(std::string_view text);

// The hexadecimal text for which ManagedObject::hexToBin gives this key; empty for a text that is
// no such key.
std::string hexTextOf(const Pegasus::String& key);

// True for well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF.
bool isUtf8(std::string_view text);

// True for UTF-8 text with a character that is not shown, or that changes how others are: a mark of
// direction, a space without width and the like.
bool hasHidden(std::string_view text);

// A text that may be shown to people: each control character but the end of a line, each character
// of which hasHidden() tells, and each byte that is no UTF-8 is written as \u202E, which JSON
// takes for the character too, or \xFF.
std::string escaped(std::string_view text);

// The bytes at the end of a text that are the beginning of a character.
std::size_t beginningAtEnd(std::string_view text);

// A client's text for an error message: in double quotes, at most 256 bytes of it, and with a
// question mark for each byte that is no printable ASCII.
std::string quoted(std::string_view text);

} // namespace array
