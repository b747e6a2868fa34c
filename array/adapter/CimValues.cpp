#include "array/adapter/CimValues.h"

#include <cstdio>
#include <ctime>

#include <Pegasus/Common/String.h>

#include "engine/DRAVCodes.h"

namespace array {

using Pegasus::Uint16;

namespace {

// The converters know each pair; the value maps are short. A code that they don't know, which the
// rules keep out of the array, gives 1: "Other" of the digests.
template<class FromSMI>
Uint16 smiFrom(Uint16 code) {
    constexpr Uint16 lastOfTheMaps = 6;
    for (Uint16 smi = 1; smi <= lastOfTheMaps; ++smi) {
        if (FromSMI(smi).code == code) {
            return smi;
        }
    }
    return 1;
}

} // namespace

Uint16 smiFromDigest(Uint16 code) {
    return smiFrom<Pegasus::DRAVDigestFromSMI>(code);
}

Uint16 smiFromAuthSetting(Uint16 code) {
    return smiFrom<Pegasus::DRAVAuthSettingFromSMI>(code);
}

Pegasus::CIMDateTime dateTime(std::uint64_t microseconds) {
    const std::time_t seconds = static_cast<std::time_t>(microseconds / 1000000);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char digits[32];
    char text[48];
    std::strftime(digits, sizeof digits, "%Y%m%d%H%M%S", &utc);
    std::snprintf(text, sizeof text, "%s.%06u+000", digits,
                  static_cast<unsigned>(microseconds % 1000000));
    return Pegasus::CIMDateTime(Pegasus::String(text));
}

} // namespace array
