#ifndef ARRAY_LIMITS_H
#define ARRAY_LIMITS_H

#include <cstdint>

namespace array {

// LUNs are below this: 14 bits of flat space addressing (SAM-5 section 4.7.7.3).
constexpr std::uint32_t lunLimit = 16384;

} // namespace array

#endif
