#pragma once

#include <cstdint>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>

namespace array {

// The number of CIM's value map for one of the engine's codes; the opposite of DRAVDigestFromSMI
// and DRAVAuthSettingFromSMI.
Pegasus::Uint16 smiFromDigest(Pegasus::Uint16 code);
Pegasus::Uint16 smiFromAuthSetting(Pegasus::Uint16 code);

// A moment of UTC from microseconds since 1970-01-01.
Pegasus::CIMDateTime dateTime(std::uint64_t microseconds);

// Counters and flags as the schema types them: uint64 is another type than std::uint64_t on some
// platforms.
inline Pegasus::CIMValue counter(std::uint64_t value) {
    return Pegasus::CIMValue(static_cast<Pegasus::Uint64>(value));
}

inline Pegasus::CIMValue flag(std::uint32_t word) {
    return Pegasus::CIMValue(static_cast<Pegasus::Boolean>(word != 0));
}

} // namespace array
