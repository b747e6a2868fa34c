#include "array/model/LoginParameters.h"

#include <set>

#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

TEST(LoginParameters, TheDefaultsAreGood) {
    EXPECT_NO_THROW(checkParameters(SessionParameters(), "it"));
    EXPECT_NO_THROW(checkParameters(ConnectionParameters(), "it"));
}

template<class Parameters, class EngineRecord>
void expectWholeTable() {
    std::size_t bytes = 0;
    std::set<std::string> names;
    std::size_t count = 0;
    forEachLoginParameter<Parameters>([&](const auto& row) {
        EXPECT_EQ(Parameters().*row.field, EngineRecord().*row.engineField) << row.key;
        bytes += sizeof(Parameters().*row.field);
        for (const std::string name : {row.key, row.column, row.member, row.proposed}) {
            names.insert(name + '/' + std::to_string(++count % 4));
        }
    });
    EXPECT_EQ(bytes, sizeof(Parameters)); // each field has its row
    EXPECT_EQ(names.size(), count);       // and no two rows share a name
}

TEST(LoginParameters, EachFieldHasARowWithNamesAndTheDefaultOfTheEngine) {
    expectWholeTable<SessionParameters, Pegasus::DRAVSessionSettings>();
    expectWholeTable<ConnectionParameters, Pegasus::DRAVConnectionSettings>();
}

struct Limit {
    const char* name;
    std::uint32_t SessionParameters::*field;
    std::uint32_t least;
    std::uint32_t most;
    const char* section;
};

class SessionLimit : public testing::TestWithParam<Limit> {
protected:
    static SessionParameters with(std::uint32_t value) {
        SessionParameters parameters;
        parameters.firstBurstLength = 512; // so that the two bursts agree
        if (GetParam().field == &SessionParameters::firstBurstLength) {
            parameters.maxBurstLength = 0xFFFFFF;
        }
        parameters.*GetParam().field = value;
        return parameters;
    }
    static void expectRefused(std::uint32_t value) {
        const Limit& limit = GetParam();
        expectFailure(ErrorCode::BadParameter,
                      std::string(limit.name) + " " + std::to_string(value) +
                          " of it is out of range: it must be from " + std::to_string(limit.least) +
                          " to " + std::to_string(limit.most) + " (RFC 7143 section " +
                          limit.section + ").",
                      [&] { checkParameters(with(value), "it"); });
    }
};

TEST_P(SessionLimit, IsWithin) {
    EXPECT_NO_THROW(checkParameters(with(GetParam().least), "it"));
    EXPECT_NO_THROW(checkParameters(with(GetParam().most), "it"));
    if (GetParam().least > 0) {
        expectRefused(GetParam().least - 1);
    }
    expectRefused(GetParam().most + 1);
    expectRefused(0xFFFFFFFF);
}

using Session_ = SessionParameters;
INSTANTIATE_TEST_SUITE_P(
    Limits, SessionLimit,
    testing::Values(Limit{"MaxConnections", &Session_::maxConnections, 1, 65535, "13.2"},
                    Limit{"InitialR2T", &Session_::initialR2T, 0, 1, "13.10"},
                    Limit{"ImmediateData", &Session_::immediateData, 0, 1, "13.11"},
                    Limit{"MaxOutstandingR2T", &Session_::maxOutstandingR2T, 1, 65535, "13.17"},
                    Limit{"FirstBurstLength", &Session_::firstBurstLength, 512, 16777215, "13.14"},
                    Limit{"MaxBurstLength", &Session_::maxBurstLength, 512, 16777215, "13.13"},
                    Limit{"DataSequenceInOrder", &Session_::dataSequenceInOrder, 0, 1, "13.19"},
                    Limit{"DataPDUInOrder", &Session_::dataPDUInOrder, 0, 1, "13.18"},
                    Limit{"DefaultTime2Wait", &Session_::defaultTime2Wait, 0, 3600, "13.15"},
                    Limit{"DefaultTime2Retain", &Session_::defaultTime2Retain, 0, 3600, "13.16"},
                    Limit{"ErrorRecoveryLevel", &Session_::errorRecoveryLevel, 0, 2, "13.20"}),
    [](const auto& limit) { return limit.param.name; });

TEST(LoginParameters, AFirstBurstIsNotLongerThanTheBurst) {
    SessionParameters parameters;
    parameters.maxBurstLength = 65536;
    parameters.firstBurstLength = 65536;
    EXPECT_NO_THROW(checkParameters(parameters, "it"));
    parameters.firstBurstLength = 65537;
    expectFailure(ErrorCode::ParametersDisagree,
                  "FirstBurstLength 65537 of it is longer than its MaxBurstLength 65536 (RFC 7143 "
                  "section 13.14).",
                  [&] { checkParameters(parameters, "it"); });
}

TEST(LoginParameters, RecoveryInSequenceNeedsASingleOutstandingR2T) {
    SessionParameters parameters;
    parameters.maxOutstandingR2T = 2;
    EXPECT_NO_THROW(checkParameters(parameters, "it"));
    parameters.errorRecoveryLevel = 1;
    expectFailure(ErrorCode::ParametersDisagree,
                  "MaxOutstandingR2T 2 of it must be 1 with its DataSequenceInOrder 1 and "
                  "ErrorRecoveryLevel 1 (RFC 7143 section 13.19).",
                  [&] { checkParameters(parameters, "it"); });
    parameters.maxOutstandingR2T = 1;
    EXPECT_NO_THROW(checkParameters(parameters, "it"));
    parameters.maxOutstandingR2T = 2;
    parameters.dataSequenceInOrder = 0;
    EXPECT_NO_THROW(checkParameters(parameters, "it"));
}

TEST(LoginParameters, ASegmentHasItsLimits) {
    ConnectionParameters parameters;
    for (const std::uint32_t good : {512u, 16777215u}) {
        parameters.maxRecvDataSegmentLength = good;
        EXPECT_NO_THROW(checkParameters(parameters, "it"));
    }
    parameters.maxRecvDataSegmentLength = 511;
    expectFailure(ErrorCode::BadParameter,
                  "MaxRecvDataSegmentLength 511 of it is out of range: it must be from 512 to "
                  "16777215 (RFC 7143 section 13.12).",
                  [&] { checkParameters(parameters, "it"); });
}

TEST(LoginParameters, MarkersAreOffOrOn) {
    ConnectionParameters parameters;
    parameters.markersOnReceive = 1;
    EXPECT_NO_THROW(checkParameters(parameters, "it"));
    parameters.markersOnReceive = 2;
    expectFailure(ErrorCode::BadParameter,
                  "IFMarker 2 of it is out of range: it must be from 0 to 1 (RFC 7143 section "
                  "13.25).",
                  [&] { checkParameters(parameters, "it"); });
}

// The codes that each choice accepts, of those that there are.
struct Choices {
    std::uint16_t ConnectionParameters::*field;
    const char* name;
    std::vector<std::uint16_t> good;
    std::vector<std::uint16_t> bad;
    const char* section;
};

const std::vector<Choices>& everyChoice() {
    using namespace Pegasus;
    using Parameters = ConnectionParameters;
    static const std::vector<std::uint16_t> digests = {DRAV_DIGEST_NONE, DRAV_DIGEST_CRC32C,
                                                       DRAV_DIGEST_OTHER};
    static const std::vector<std::uint16_t> noFirstDigests = {DRAV_DIGEST_NO_PREFERENCE, 2,
                                                              DRAV_DIGEST_UNKNOWN};
    static const std::vector<std::uint16_t> secondDigests = {
        DRAV_DIGEST_NONE, DRAV_DIGEST_CRC32C, DRAV_DIGEST_NO_PREFERENCE, DRAV_DIGEST_OTHER};
    static const std::vector<std::uint16_t> noDigests = {2, DRAV_DIGEST_UNKNOWN};
    static const std::vector<std::uint16_t> methods = {DRAV_AUTH_NO_AUTHENTICATION, DRAV_AUTH_CHAP,
                                                       DRAV_AUTH_SRP, DRAV_AUTH_KERBEROS,
                                                       DRAV_AUTH_NONE};
    static const std::vector<std::uint16_t> noMethods = {2, DRAV_AUTH_UNKNOWN};
    static const std::vector<Choices> rows = {
        {&Parameters::primaryHeaderDigest, "primary HeaderDigest", digests, noFirstDigests, "13.1"},
        {&Parameters::primaryDataDigest, "primary DataDigest", digests, noFirstDigests, "13.1"},
        {&Parameters::secondaryHeaderDigest, "secondary HeaderDigest", secondDigests, noDigests,
         "13.1"},
        {&Parameters::secondaryDataDigest, "secondary DataDigest", secondDigests, noDigests,
         "13.1"},
        {&Parameters::primaryAuthMethod, "primary AuthMethod", methods, noMethods, "12.1"},
        {&Parameters::secondaryAuthMethod, "secondary AuthMethod", methods, noMethods, "12.1"},
    };
    return rows;
}

TEST(LoginParameters, EachMethodIsOneThatItsChoiceKnows) {
    for (const Choices& choice : everyChoice()) {
        ConnectionParameters parameters;
        for (const std::uint16_t code : choice.good) {
            parameters.*choice.field = code;
            EXPECT_NO_THROW(checkParameters(parameters, "it")) << choice.name << ' ' << code;
        }
        for (const std::uint16_t code : choice.bad) {
            parameters.*choice.field = code;
            expectFailure(ErrorCode::BadParameter,
                          choice.name + std::string(" ") + std::to_string(code) +
                              " of it is no method that it can have (RFC 7143 section " +
                              choice.section + ").",
                          [&] { checkParameters(parameters, "it"); });
        }
    }
}

} // namespace
} // namespace array
