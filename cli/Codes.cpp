#include "cli/Codes.h"

#include <algorithm>
#include <iterator>

#include "engine/DRAVCodes.h"

namespace cli {

namespace {

struct Code {
    std::uint16_t code;
    const char* text;
};

constexpr Code digests[] = {
    {Pegasus::DRAV_DIGEST_NONE, "None"},
    {Pegasus::DRAV_DIGEST_CRC32C, "CRC32C"},
    {Pegasus::DRAV_DIGEST_NO_PREFERENCE, "NoPreference"},
    {Pegasus::DRAV_DIGEST_OTHER, "Other"},
};

constexpr Code auths[] = {
    {Pegasus::DRAV_AUTH_NO_AUTHENTICATION, "NoAuthentication"},
    {Pegasus::DRAV_AUTH_CHAP, "CHAP"},
    {Pegasus::DRAV_AUTH_SRP, "SRP"},
    {Pegasus::DRAV_AUTH_KERBEROS, "Kerberos"},
    {Pegasus::DRAV_AUTH_NONE, "None"},
};

template<std::size_t count>
const char* find(const Code (&codes)[count], std::uint16_t code) {
    const auto found = std::ranges::find(codes, code, &Code::code);
    return found == std::end(codes) ? "Unknown" : found->text;
}

} // namespace

const char* digestText(std::uint16_t code) {
    return find(digests, code);
}

const char* authText(std::uint16_t code) {
    return find(auths, code);
}

} // namespace cli
