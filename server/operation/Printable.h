// Text of strangers as it may stand in a line that somebody reads on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace smisd {

// The text with each control character (U+0000 to U+001F, U+007F to U+009F) and each mark that
// breaks lines or turns the direction of writing (U+061C, U+200E, U+200F, U+2028 to U+202E, U+2066
// to U+2069) escaped, as \u202E. What is no UTF-8 becomes U+FFFD.
//
// Of JSON, the same JSON: its strings mean what they meant.
std::string printable(std::string_view text);

} // namespace smisd
