#pragma once

#include <cstdint>
#include <string>

#include "array/model/Records.h"

namespace cli {

// A number of bytes in the greatest binary unit that it fills: "1 GiB"; with one decimal where it
// does not divide: "1.5 GiB".
std::string sizeText(std::uint64_t bytes);

// And back: a number of bytes, or a whole number with a unit, in letters of either case: B, KiB to
// EiB (powers of 1024), KB to EB (powers of 1000). Throws CLI::ValidationError for other texts and
// for sizes of 2^64 bytes and more.
std::uint64_t sizeFromText(const std::string& text);

// A decimal number up to limit; throws CLI::ValidationError for another text.
std::uint64_t numberFromText(const std::string& text, std::uint64_t limit);

// A portal as people write it: "192.0.2.10:3260", "[2001:db8::1]:3260".
std::string portalText(const array::Endpoint& endpoint);

// And back; without a port it is 3260 (RFC 7143 section 15). The address is not judged; a
// port that is no number below 65536 throws CLI::ValidationError.
array::Endpoint portalFromText(const std::string& text);

// "1 volume", "2 volumes".
std::string counted(std::uint64_t count, const std::string& noun);

} // namespace cli
