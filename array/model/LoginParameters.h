#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "engine/DRAVCodes.h"
#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVSessionSettings.h"

// Login parameters as proposed by a target, and as agreed in a session or connection: their values,
// and below them one table from which all else is made that deals with each of them: columns and
// rules, the engine's records, CIM properties, what arrayctl shows.
//
// A new parameter takes: a field and a row here; a step in database/Schema.cpp that adds its column
// to the databases that are there; a field in the engine's record; a row in the table of
// providers/iscsi/iSCSISettingsProvider.cpp; a property in the class declarations of mof/.

namespace array {

// The fields mean what those of DRAVSessionSettings mean.
struct SessionParameters {
    std::uint32_t maxConnections = 1;
    std::uint32_t initialR2T = 1;
    std::uint32_t immediateData = 1;
    std::uint32_t maxOutstandingR2T = 1;
    std::uint32_t firstBurstLength = 65536;
    std::uint32_t maxBurstLength = 262144;
    std::uint32_t dataSequenceInOrder = 1;
    std::uint32_t dataPDUInOrder = 1;
    std::uint32_t defaultTime2Wait = 2;
    std::uint32_t defaultTime2Retain = 20;
    std::uint32_t errorRecoveryLevel = 0;

    bool operator==(const SessionParameters&) const = default;
};

// The fields mean what those of DRAVConnectionSettings mean.
struct ConnectionParameters {
    std::uint32_t maxRecvDataSegmentLength = 8192;
    std::uint16_t primaryHeaderDigest = Pegasus::DRAV_DIGEST_CRC32C;
    std::uint16_t primaryDataDigest = Pegasus::DRAV_DIGEST_CRC32C;
    std::uint16_t secondaryHeaderDigest = Pegasus::DRAV_DIGEST_NONE;
    std::uint16_t secondaryDataDigest = Pegasus::DRAV_DIGEST_NONE;
    std::uint32_t markersOnReceive = 0;
    std::uint16_t primaryAuthMethod = Pegasus::DRAV_AUTH_CHAP;
    std::uint16_t secondaryAuthMethod = Pegasus::DRAV_AUTH_NO_AUTHENTICATION;

    bool operator==(const ConnectionParameters&) const = default;
};

// What a parameter may be.
struct ParameterValues {
    enum class Kind { Number, Flag, Digest, AuthMethod };

    Kind kind;
    std::uint32_t least = 0, most = 0;         // Number and Flag
    std::span<const std::uint16_t> codes = {}; // Digest and AuthMethod: engine/DRAVCodes.h
};

inline constexpr std::uint32_t longestLength = 0xFFFFFF; // bytes: a length has 24 bits

constexpr ParameterValues numberFrom(std::uint32_t least, std::uint32_t most) {
    return {ParameterValues::Kind::Number, least, most};
}

inline constexpr ParameterValues zeroOrOne = {ParameterValues::Kind::Flag, 0, 1};

// What there is to know of a parameter besides its default.
template<class Parameters, class Field, class EngineRecord>
struct LoginParameter {
    Field Parameters::*field;
    Field EngineRecord::*engineField; // the same in the engine's record
    const char* key;                  // its text key
    const char* section;              // of RFC 7143, with its limits
    ParameterValues values;
    const char* column;   // of the tables of array.db that have it
    const char* member;   // of the JSON that arrayctl writes
    const char* proposed; // property of a target's settings
    const char* agreed;   // property of a session or connection; null: it has none
};
template<class Parameters, class Field, class EngineRecord>
LoginParameter(Field Parameters::*, Field EngineRecord::*, const char*, const char*,
               ParameterValues, const char*, const char*, const char*, const char*)
    -> LoginParameter<Parameters, Field, EngineRecord>;

// clang-format off

inline constexpr auto sessionParameters = [] {
    using Ours = SessionParameters;
    using Engine = Pegasus::DRAVSessionSettings;
    return std::tuple{
        LoginParameter{&Ours::maxConnections, &Engine::maxConnections,
            "MaxConnections", "13.2", numberFrom(1, 65535),
            "max_connections", "maxConnections",
            "MaxConnectionsPerSession", "MaxConnectionsPerSession"},
        LoginParameter{&Ours::initialR2T, &Engine::initialR2T,
            "InitialR2T", "13.10", zeroOrOne,
            "initial_r2t", "initialR2T",
            "InitialR2TPreference", "InitialR2T"},
        LoginParameter{&Ours::immediateData, &Engine::immediateData,
            "ImmediateData", "13.11", zeroOrOne,
            "immediate_data", "immediateData",
            "ImmediateDataPreference", "ImmediateData"},
        LoginParameter{&Ours::maxOutstandingR2T, &Engine::maxOutstandingR2T,
            "MaxOutstandingR2T", "13.17", numberFrom(1, 65535),
            "max_outstanding_r2t", "maxOutstandingR2T",
            "MaxOutstandingR2T", "MaxOutstandingR2T"},
        LoginParameter{&Ours::firstBurstLength, &Engine::firstBurstLength,
            "FirstBurstLength", "13.14", numberFrom(512, longestLength),
            "first_burst_length", "firstBurstLength",
            "MaxUnsolicitedFirstDataBurstLength", "MaxUnsolicitedFirstDataBurstLength"},
        LoginParameter{&Ours::maxBurstLength, &Engine::maxBurstLength,
            "MaxBurstLength", "13.13", numberFrom(512, longestLength),
            "max_burst_length", "maxBurstLength",
            "MaxDataBurstLength", "MaxDataBurstLength"},
        LoginParameter{&Ours::dataSequenceInOrder, &Engine::dataSequenceInOrder,
            "DataSequenceInOrder", "13.19", zeroOrOne,
            "data_sequence_in_order", "dataSequenceInOrder",
            "DataSequenceInOrderPreference", "DataSequenceInOrder"},
        LoginParameter{&Ours::dataPDUInOrder, &Engine::dataPDUInOrder,
            "DataPDUInOrder", "13.18", zeroOrOne,
            "data_pdu_in_order", "dataPDUInOrder",
            "DataPDUInOrderPreference", "DataPDUInOrder"},
        LoginParameter{&Ours::defaultTime2Wait, &Engine::defaultTime2Wait,
            "DefaultTime2Wait", "13.15", numberFrom(0, 3600),
            "default_time2wait", "defaultTime2Wait",
            "DefaultTimeToWaitPreference", "DefaultTimeToWait"},
        LoginParameter{&Ours::defaultTime2Retain, &Engine::defaultTime2Retain,
            "DefaultTime2Retain", "13.16", numberFrom(0, 3600),
            "default_time2retain", "defaultTime2Retain",
            "DefaultTimeToRetainPreference", "DefaultTimeToRetain"},
        LoginParameter{&Ours::errorRecoveryLevel, &Engine::errorRecoveryLevel,
            "ErrorRecoveryLevel", "13.20", numberFrom(0, 2),
            "error_recovery_level", "errorRecoveryLevel",
            "ErrorRecoveryLevelPreference", "ErrorRecoveryLevel"},
    };
}();

inline constexpr std::uint16_t digestCodes[] = {
    Pegasus::DRAV_DIGEST_NONE, Pegasus::DRAV_DIGEST_CRC32C, Pegasus::DRAV_DIGEST_OTHER,
    Pegasus::DRAV_DIGEST_NO_PREFERENCE}; // the last as a second choice only
inline constexpr std::uint16_t authMethodCodes[] = {
    Pegasus::DRAV_AUTH_NO_AUTHENTICATION, Pegasus::DRAV_AUTH_CHAP, Pegasus::DRAV_AUTH_SRP,
    Pegasus::DRAV_AUTH_KERBEROS, Pegasus::DRAV_AUTH_NONE};

inline constexpr auto connectionParameters = [] {
    constexpr auto digest = ParameterValues::Kind::Digest;
    constexpr ParameterValues firstDigest = {digest, 0, 0, std::span(digestCodes).first<3>()};
    constexpr ParameterValues secondDigest = {digest, 0, 0, digestCodes};
    constexpr ParameterValues authMethod = {ParameterValues::Kind::AuthMethod, 0, 0,
                                            authMethodCodes};
    using Ours = ConnectionParameters;
    using Engine = Pegasus::DRAVConnectionSettings;
    return std::tuple{
        LoginParameter{&Ours::maxRecvDataSegmentLength, &Engine::maxRecvDataSegmentLength,
            "MaxRecvDataSegmentLength", "13.12", numberFrom(512, longestLength),
            "max_recv_data_segment_length", "maxRecvDataSegmentLength",
            "MaxReceiveDataSegmentLength", "MaxReceiveDataSegmentLength"},
        LoginParameter{&Ours::primaryHeaderDigest, &Engine::primaryHeaderDigest,
            "primary HeaderDigest", "13.1", firstDigest,
            "primary_header_digest", "primaryHeaderDigest",
            "PrimaryHeaderDigestMethod", "HeaderDigestMethod"},
        LoginParameter{&Ours::primaryDataDigest, &Engine::primaryDataDigest,
            "primary DataDigest", "13.1", firstDigest,
            "primary_data_digest", "primaryDataDigest",
            "PrimaryDataDigestMethod", "DataDigestMethod"},
        LoginParameter{&Ours::secondaryHeaderDigest, &Engine::secondaryHeaderDigest,
            "secondary HeaderDigest", "13.1", secondDigest,
            "secondary_header_digest", "secondaryHeaderDigest",
            "SecondaryHeaderDigestMethod", nullptr},
        LoginParameter{&Ours::secondaryDataDigest, &Engine::secondaryDataDigest,
            "secondary DataDigest", "13.1", secondDigest,
            "secondary_data_digest", "secondaryDataDigest",
            "SecondaryDataDigestMethod", nullptr},
        LoginParameter{&Ours::markersOnReceive, &Engine::markersOnReceive,
            "IFMarker", "13.25", zeroOrOne,
            "markers_on_receive", "markersOnReceive",
            "RequestingMarkersOnReceive", "ReceivingMarkers"},
        LoginParameter{&Ours::primaryAuthMethod, &Engine::primaryAuthMethod,
            "primary AuthMethod", "12.1", authMethod,
            "primary_auth_method", "primaryAuthMethod",
            "PrimaryAuthenticationMethod", nullptr},
        LoginParameter{&Ours::secondaryAuthMethod, &Engine::secondaryAuthMethod,
            "secondary AuthMethod", "12.1", authMethod,
            "secondary_auth_method", "secondaryAuthMethod",
            "SecondaryAuthenticationMethod", nullptr},
    };
}();

// clang-format on

// visit(row) for each row of the table of SessionParameters or ConnectionParameters.
template<class Parameters, class Visit>
constexpr void forEachLoginParameter(Visit&& visit) {
    const auto visitAll = [&](const auto&... rows) { (visit(rows), ...); };
    if constexpr (std::is_same_v<Parameters, SessionParameters>) {
        std::apply(visitAll, sessionParameters);
    } else {
        std::apply(visitAll, connectionParameters);
    }
}

// Checks the parameters of `owner`, each by itself, and how they must agree. Throws
// DRAVOperationFailedException with ErrorCode::BadParameter or ParametersDisagree, which names the
// parameters by their text keys.
void checkParameters(const SessionParameters& parameters, std::string_view owner);
void checkParameters(const ConnectionParameters& parameters, std::string_view owner);

} // namespace array
