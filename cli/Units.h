#ifndef CLI_UNITS_H
#define CLI_UNITS_H

#include <cstdint>
#include <string>

#include "array/Records.h"

namespace cli {

// A number of bytes in the greatest binary unit that it fills: "1 GiB"; with one decimal where it
// does not divide: "1.5 GiB".
std::string sizeText(std::uint64_t bytes);

// A portal as people write it: "192.0.2.10:3260", "[2001:db8::1]:3260".
std::string portalText(const array::Endpoint& endpoint);

// And back; without a port it is 3260 (RFC 7143 section 15). The address is not judged, the port
// throws CLI::ValidationError if it is no number below 65536.
array::Endpoint portalFromText(const std::string& text);

// "1 volume", "2 volumes".
std::string counted(std::uint64_t count, const std::string& noun);

} // namespace cli

#endif
