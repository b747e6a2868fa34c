#ifndef ARRAY_ENGINE_TEXT_H
#define ARRAY_ENGINE_TEXT_H

#include <string>
#include <string_view>

#include <Pegasus/Common/String.h>

namespace array {

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

// A client's text for an error message: in double quotes, at most 256 bytes of it, and with a
// question mark for each byte that is no printable ASCII.
std::string quoted(std::string_view text);

} // namespace array

#endif
