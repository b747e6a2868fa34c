#include "array/model/LoginParameters.h"

#include <algorithm>
#include <initializer_list>
#include <string>

#include "array/model/ErrorCode.h"

namespace array {

namespace {

// A number within limits.
template<class Parameters>
struct Range {
    std::uint32_t Parameters::*field;
    const char* name; // text key
    std::uint32_t least;
    std::uint32_t most;
    const char* section; // of RFC 7143
};

constexpr std::uint32_t LONGEST = 0xFFFFFF; // 24 bits

constexpr Range<SessionParameters> SESSION_RANGES[] = {
    {&SessionParameters::maxConnections, "MaxConnections", 1, 65535, "13.2"},
    {&SessionParameters::initialR2T, "InitialR2T", 0, 1, "13.10"},
    {&SessionParameters::immediateData, "ImmediateData", 0, 1, "13.11"},
    {&SessionParameters::maxOutstandingR2T, "MaxOutstandingR2T", 1, 65535, "13.17"},
    {&SessionParameters::firstBurstLength, "FirstBurstLength", 512, LONGEST, "13.14"},
    {&SessionParameters::maxBurstLength, "MaxBurstLength", 512, LONGEST, "13.13"},
    {&SessionParameters::dataSequenceInOrder, "DataSequenceInOrder", 0, 1, "13.19"},
    {&SessionParameters::dataPDUInOrder, "DataPDUInOrder", 0, 1, "13.18"},
    {&SessionParameters::defaultTime2Wait, "DefaultTime2Wait", 0, 3600, "13.15"},
    {&SessionParameters::defaultTime2Retain, "DefaultTime2Retain", 0, 3600, "13.16"},
    {&SessionParameters::errorRecoveryLevel, "ErrorRecoveryLevel", 0, 2, "13.20"},
};

constexpr Range<ConnectionParameters> CONNECTION_RANGES[] = {
    {&ConnectionParameters::maxRecvDataSegmentLength, "MaxRecvDataSegmentLength", 512, LONGEST,
     "13.12"},
    {&ConnectionParameters::markersOnReceive, "IFMarker", 0, 1, "13.25"},
};

// A code among those that the engine knows for it (engine/DRAVCodes.h).
struct Choice {
    std::uint16_t ConnectionParameters::*field;
    const char* name;
    std::initializer_list<std::uint16_t> codes;
    const char* section;
};

constexpr std::initializer_list<std::uint16_t> FIRST_DIGESTS = {
    Pegasus::DRAV_DIGEST_NONE, Pegasus::DRAV_DIGEST_CRC32C, Pegasus::DRAV_DIGEST_OTHER};
constexpr std::initializer_list<std::uint16_t> SECOND_DIGESTS = {
    Pegasus::DRAV_DIGEST_NONE, Pegasus::DRAV_DIGEST_CRC32C, Pegasus::DRAV_DIGEST_NO_PREFERENCE,
    Pegasus::DRAV_DIGEST_OTHER};
constexpr std::initializer_list<std::uint16_t> AUTH_METHODS = {
    Pegasus::DRAV_AUTH_NO_AUTHENTICATION, Pegasus::DRAV_AUTH_CHAP, Pegasus::DRAV_AUTH_SRP,
    Pegasus::DRAV_AUTH_KERBEROS, Pegasus::DRAV_AUTH_NONE};

constexpr Choice CHOICES[] = {
    {&ConnectionParameters::primaryHeaderDigest, "primary HeaderDigest", FIRST_DIGESTS, "13.1"},
    {&ConnectionParameters::primaryDataDigest, "primary DataDigest", FIRST_DIGESTS, "13.1"},
    {&ConnectionParameters::secondaryHeaderDigest, "secondary HeaderDigest", SECOND_DIGESTS,
     "13.1"},
    {&ConnectionParameters::secondaryDataDigest, "secondary DataDigest", SECOND_DIGESTS, "13.1"},
    {&ConnectionParameters::primaryAuthMethod, "primary AuthMethod", AUTH_METHODS, "12.1"},
    {&ConnectionParameters::secondaryAuthMethod, "secondary AuthMethod", AUTH_METHODS, "12.1"},
};

std::string of(const char* name, std::uint32_t value, std::string_view owner) {
    return std::string(name) + ' ' + std::to_string(value) + " of " + std::string(owner);
}

std::string section(const char* number) {
    return std::string(" (RFC 7143 section ") + number + ").";
}

template<class Parameters, std::size_t size>
void checkRanges(const Range<Parameters> (&ranges)[size], const Parameters& parameters,
                 std::string_view owner) {
    for (const Range<Parameters>& range : ranges) {
        const std::uint32_t value = parameters.*range.field;
        if (value < range.least || value > range.most) {
            fail(ErrorCode::BadParameter, of(range.name, value, owner) +
                                              " is out of range: it must be from " +
                                              std::to_string(range.least) + " to " +
                                              std::to_string(range.most) + section(range.section));
        }
    }
}

} // namespace

void checkParameters(const SessionParameters& parameters, std::string_view owner) {
    checkRanges(SESSION_RANGES, parameters, owner);
    if (parameters.firstBurstLength > parameters.maxBurstLength) {
        fail(ErrorCode::ParametersDisagree,
             of("FirstBurstLength", parameters.firstBurstLength, owner) +
                 " is longer than its MaxBurstLength " + std::to_string(parameters.maxBurstLength) +
                 section("13.14"));
    }
    if (parameters.maxOutstandingR2T != 1 && parameters.dataSequenceInOrder == 1 &&
        parameters.errorRecoveryLevel != 0) {
        fail(ErrorCode::ParametersDisagree,
             of("MaxOutstandingR2T", parameters.maxOutstandingR2T, owner) +
                 " must be 1 with its DataSequenceInOrder 1 and ErrorRecoveryLevel " +
                 std::to_string(parameters.errorRecoveryLevel) + section("13.19"));
    }
}

void checkParameters(const ConnectionParameters& parameters, std::string_view owner) {
    checkRanges(CONNECTION_RANGES, parameters, owner);
    for (const Choice& choice : CHOICES) {
        const std::uint16_t code = parameters.*choice.field;
        if (std::find(choice.codes.begin(), choice.codes.end(), code) == choice.codes.end()) {
            fail(ErrorCode::BadParameter, of(choice.name, code, owner) +
                                              " is no method that it can have" +
                                              section(choice.section));
        }
    }
}

} // namespace array
