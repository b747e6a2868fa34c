#include "engine/DRAVCodes.h"

#include <utility>

namespace Pegasus {

namespace {

using Row = std::pair<Uint16, Uint16>; // number of the CIM value map, code

constexpr Row DIGESTS[] = {
    {Uint16(1), DRAV_DIGEST_OTHER},
    {Uint16(2), DRAV_DIGEST_NONE},
    {Uint16(3), DRAV_DIGEST_CRC32C},
    {Uint16(4), DRAV_DIGEST_NO_PREFERENCE},
};

constexpr Row AUTH_METHODS[] = {
    {Uint16(2), DRAV_AUTH_NONE},     {Uint16(3), DRAV_AUTH_NO_AUTHENTICATION},
    {Uint16(4), DRAV_AUTH_SRP},      {Uint16(5), DRAV_AUTH_CHAP},
    {Uint16(6), DRAV_AUTH_KERBEROS},
};

template<std::size_t size>
constexpr Uint16 codeOf(const Row (&rows)[size], Uint16 smiValue, Uint16 unknown) {
    for (const auto& [value, code] : rows)
        if (value == smiValue)
            return code;
    return unknown;
}

} // namespace

DRAVDigestFromSMI::DRAVDigestFromSMI(Uint16 smiValue)
    : code(codeOf(DIGESTS, smiValue, DRAV_DIGEST_UNKNOWN)) {}

DRAVAuthSettingFromSMI::DRAVAuthSettingFromSMI(Uint16 smiValue)
    : code(codeOf(AUTH_METHODS, smiValue, DRAV_AUTH_UNKNOWN)) {}

} // namespace Pegasus
