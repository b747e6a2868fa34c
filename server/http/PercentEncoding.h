// Percent-encoding of header values (RFC 3986, section 2.1; DSP0200, "Mapping of CIM Object
// Paths").
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace smisd {

// Everything but letters, digits and -_.!~*'() is encoded.
std::string percentEncoded(std::string_view text);

// Nothing when a % is not followed by two hexadecimal digits.
std::optional<std::string> percentDecoded(std::string_view text);

} // namespace smisd
