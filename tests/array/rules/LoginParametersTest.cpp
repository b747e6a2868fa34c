#include "array/rules/LoginParameters.h"

#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

TEST(LoginParameters, TheDefaultsAreGood) {
    EXPECT_NO_THROW(checkParameters(SessionParameters(), "it"));
    EXPECT_NO_THROW(checkParameters(ConnectionParameters(), "it"));
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
        if (GetParam().field == &SessionParameters::firstBurstLength)
            parameters.maxBurstLength = 0xFFFFFF;
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
    if (GetParam().least > 0)
        expectRefused(GetParam().least - 1);
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

TEST(LoginParameters, UnknownMethodsAreRefused) {
    ConnectionParameters parameters;
    parameters.secondaryHeaderDigest = Pegasus::DRAV_DIGEST_NO_PREFERENCE;
    EXPECT_NO_THROW(checkParameters(parameters, "it"));
    parameters.primaryHeaderDigest = Pegasus::DRAV_DIGEST_NO_PREFERENCE;
    expectFailure(ErrorCode::BadParameter,
                  "primary HeaderDigest 8 of it is no method that it can have (RFC 7143 section "
                  "13.1).",
                  [&] { checkParameters(parameters, "it"); });
    parameters = {};
    parameters.secondaryDataDigest = Pegasus::DRAV_DIGEST_UNKNOWN;
    EXPECT_EQ(failureOf([&] { checkParameters(parameters, "it"); }).code, ErrorCode::BadParameter);
    parameters = {};
    parameters.secondaryAuthMethod = Pegasus::DRAV_AUTH_UNKNOWN;
    expectFailure(
        ErrorCode::BadParameter,
        "secondary AuthMethod 65535 of it is no method that it can have (RFC 7143 section "
        "12.1).",
        [&] { checkParameters(parameters, "it"); });
}

} // namespace
} // namespace array
