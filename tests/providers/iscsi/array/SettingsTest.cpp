// Login parameters are read and changed, and statistics read, with a real array behind the
// provider.

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/providers/iscsi/array/ISCSIClient.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using array::ErrorCode;
using array::Id;
using testing::Contains;
using testing::HasSubstr;

namespace {

const char* const SESSION = "CIM_iSCSISessionSettings";
const char* const CONNECTION = "CIM_iSCSIConnectionSettings";

class SettingsTest : public testing::Test {
protected:
    // Whether a change is refused so, and the settings are as before.
    void expectRefused(ErrorCode code, const char* className, Id id, const char* property,
                       const CIMValue& value) {
        const std::vector<std::string> before = client.settings(className, id);
        clearLog();
        EXPECT_EQ(refusal([&] { client.modify(className, id, property, value); }), code)
            << property;
        EXPECT_EQ(client.settings(className, id), before);
    }

    ISCSIClient client;
    const Id target = client.addTarget("t1", 1);
    const Id session = client.array.snapshot()->sessionSettingsOf(target);
    const Id connection = client.array.snapshot()->connectionSettingsOf(target);
};

TEST_F(SettingsTest, AChangedParameterIsReadAgainAndTheOthersStay) {
    const struct {
        const char* className;
        Id id;
        const char* property;
        CIMValue value;
    } changes[] = {
        {SESSION, session, "MaxConnectionsPerSession", Uint32(2)},
        {SESSION, session, "InitialR2TPreference", false},
        {SESSION, session, "ImmediateDataPreference", false},
        {SESSION, session, "MaxOutstandingR2T", Uint32(3)},
        {SESSION, session, "MaxUnsolicitedFirstDataBurstLength", Uint32(4096)},
        {SESSION, session, "MaxDataBurstLength", Uint32(1048576)},
        {SESSION, session, "DataSequenceInOrderPreference", false},
        {SESSION, session, "DataPDUInOrderPreference", false},
        {SESSION, session, "DefaultTimeToWaitPreference", Uint32(4)},
        {SESSION, session, "DefaultTimeToRetainPreference", Uint32(5)},
        {SESSION, session, "ErrorRecoveryLevelPreference", Uint32(1)},
        {CONNECTION, connection, "MaxReceiveDataSegmentLength", Uint32(65536)},
        {CONNECTION, connection, "PrimaryHeaderDigestMethod", Uint16(2)},
        {CONNECTION, connection, "PrimaryDataDigestMethod", Uint16(1)},
        {CONNECTION, connection, "SecondaryHeaderDigestMethod", Uint16(4)},
        {CONNECTION, connection, "SecondaryDataDigestMethod", Uint16(3)},
        {CONNECTION, connection, "RequestingMarkersOnReceive", true},
        {CONNECTION, connection, "PrimaryAuthenticationMethod", Uint16(4)},
        {CONNECTION, connection, "SecondaryAuthenticationMethod", Uint16(6)},
    };
    for (const auto& [className, id, property, value] : changes) {
        std::vector<std::string> expected = client.settings(className, id);
        const std::string name = property + std::string(": ");
        const auto line = std::find_if(expected.begin(), expected.end(),
                                       [&](const auto& each) { return each.starts_with(name); });
        ASSERT_NE(line, expected.end()) << property;
        ASSERT_NE(*line, name + text(value));
        *line = name + text(value);

        client.modify(className, id, property, value);
        EXPECT_EQ(client.settings(className, id), expected) << property;
    }
}

TEST_F(SettingsTest, DigestsAndMethodsAreReadAgainByTheNumberThatWasGiven) {
    for (const Uint16 digest : {Uint16(1), Uint16(2), Uint16(3), Uint16(4)}) {
        client.modify(CONNECTION, connection, "SecondaryDataDigestMethod", digest);
        EXPECT_THAT(client.settings(CONNECTION, connection),
                    Contains("SecondaryDataDigestMethod: uint16 " + std::to_string(digest)));
    }
    for (const Uint16 method : {Uint16(2), Uint16(3), Uint16(4), Uint16(5), Uint16(6)}) {
        client.modify(CONNECTION, connection, "PrimaryAuthenticationMethod", method);
        EXPECT_THAT(client.settings(CONNECTION, connection),
                    Contains("PrimaryAuthenticationMethod: uint16 " + std::to_string(method)));
    }
}

TEST_F(SettingsTest, AValueOutOfItsRangeIsRefused) {
    expectRefused(ErrorCode::BadParameter, SESSION, session, "ErrorRecoveryLevelPreference",
                  Uint32(3));
    expectRefused(ErrorCode::BadParameter, SESSION, session, "MaxConnectionsPerSession", Uint32(0));
    expectRefused(ErrorCode::BadParameter, CONNECTION, connection, "MaxReceiveDataSegmentLength",
                  Uint32(511));
    for (const Uint16 unknown : {Uint16(0), Uint16(4), Uint16(5), Uint16(0xFFFF)}) {
        expectRefused(ErrorCode::BadParameter, CONNECTION, connection, "PrimaryHeaderDigestMethod",
                      unknown);
    }
    for (const Uint16 unknown : {Uint16(0), Uint16(1), Uint16(7), Uint16(0xFFFF)}) {
        expectRefused(ErrorCode::BadParameter, CONNECTION, connection,
                      "SecondaryAuthenticationMethod", unknown);
    }
}

TEST_F(SettingsTest, AFirstBurstLongerThanTheBurstIsRefusedAndBothAreNamed) {
    expectRefused(ErrorCode::ParametersDisagree, SESSION, session, "MaxDataBurstLength",
                  Uint32(65535));
    EXPECT_THAT(
        thrownBy<DRAVOperationFailedException>([this] {
            client.modify(SESSION, session, "MaxUnsolicitedFirstDataBurstLength", Uint32(262145));
        }),
        testing::AllOf(HasSubstr("FirstBurstLength 262145"), HasSubstr("MaxBurstLength 262144")));
}

TEST_F(SettingsTest, RecoveryThatTheOutstandingR2TsExcludeIsRefused) {
    client.modify(SESSION, session, "MaxOutstandingR2T", Uint32(16));
    expectRefused(ErrorCode::ParametersDisagree, SESSION, session, "ErrorRecoveryLevelPreference",
                  Uint32(1));
    client.modify(SESSION, session, "DataSequenceInOrderPreference", false);
    client.modify(SESSION, session, "ErrorRecoveryLevelPreference", Uint32(1));
    expectRefused(ErrorCode::ParametersDisagree, SESSION, session, "DataSequenceInOrderPreference",
                  true);
}

TEST_F(SettingsTest, KeysThatNameNoSettingsAreErrors) {
    const auto modify = [this](Id id) {
        client.modify(SESSION, id, "MaxConnectionsPerSession", Uint32(1));
    };
    EXPECT_EQ(refusal([&] { modify(0x2300FFFF); }), ErrorCode::NoSuchObject);
    EXPECT_EQ(refusal([&] { modify(connection); }), ErrorCode::WrongClass);
    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>([&] { client.settings(SESSION, connection); }),
              keyText(connection));
}

TEST_F(SettingsTest, ANewSessionHasTheParametersProposedAtItsLogin) {
    const Id endpoint = client.addEndpoint("192.0.2.10");
    const Id host = client.addHost("host1", {target});
    client.modify(SESSION, session, "MaxOutstandingR2T", Uint32(16));
    const Id live = client.array.login({target, host, "", {endpoint}});
    client.modify(SESSION, session, "MaxOutstandingR2T", Uint32(32));

    EXPECT_THAT(properties(client.instance(pathOf("CIM_iSCSISession", "InstanceID", live))),
                Contains("MaxOutstandingR2T: uint32 16"));
}

TEST_F(SettingsTest, StatisticsFollowTheLogins) {
    const Id endpoint = client.addEndpoint("192.0.2.10");
    const Id host = client.addHost("host1", {target});
    const Id stranger = client.addHost("host2", {});
    EXPECT_THROW(client.array.login({target, stranger, "", {endpoint}}),
                 DRAVOperationFailedException);
    const Id live = client.array.login({target, host, "", {endpoint}});

    EXPECT_THAT(client.settings("CIM_iSCSILoginStatistics", target),
                testing::IsSupersetOf({"LoginFailures: uint64 1", "SuccessfulLogins: uint64 1",
                                       "AuthorizationLoginFailures: uint64 1"}));
    EXPECT_THAT(client.settings("CIM_iSCSISessionFailures", target),
                Contains("SessionFailures: uint64 0"));
    EXPECT_THAT(client.settings("CIM_iSCSISessionStatistics", live),
                Contains("CommandPDUsTransferred: uint64 1"));
    EXPECT_THAT(client.settings("Ovrin_MACStatistics", endpoint),
                Contains("FramesReceived: uint64 1"));
    EXPECT_EQ(traces().back(), "gi: MACStatistics ");
}

} // namespace
