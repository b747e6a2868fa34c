// A client reads and changes login parameters, and reads statistics.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;

namespace wire {
namespace {

Xml number(const std::string& name, const std::string& text) {
    return property(name, "uint32", text);
}

class LoginParameters : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};

    // As the administrator is told; no enumeration lists the keys.
    nlohmann::json shown(const std::string& target = target1) const {
        return nlohmann::json::parse(array.arrayctl({"--json", "target", "show", target}));
    }
    const std::string sessionKey = shown()["sessionSettings"]["key"];
    const std::string connectionKey = shown()["connectionSettings"]["key"];

    static Xml named(const std::string& className, const std::string& key) {
        return instanceName(className, {{"InstanceID", key}});
    }
    std::vector<std::string> session() const {
        return client.get(named(sessionSettings, sessionKey)).properties();
    }
    std::vector<std::string> connection() const {
        return client.get(named(connectionSettings, connectionKey)).properties();
    }
    std::string changeSession(const Xml& properties) const {
        return client.modify(named(sessionSettings, sessionKey), sessionSettings, properties)
            .error();
    }
    std::string changeConnection(const Xml& properties) const {
        return client
            .modify(named(connectionSettings, connectionKey), connectionSettings, properties)
            .error();
    }
};

TEST_F(LoginParameters, OfASessionAreChangedAndReadAgain) {
    EXPECT_EQ(changeSession(number("MaxDataBurstLength", "1048576") +
                            property("InitialR2TPreference", "boolean", "FALSE")),
              "");
    EXPECT_THAT(session(), IsSupersetOf({"MaxDataBurstLength: uint32 1048576",
                                         "InitialR2TPreference: boolean FALSE",
                                         "MaxUnsolicitedFirstDataBurstLength: uint32 65536",
                                         "ErrorRecoveryLevelPreference: uint32 0"}));
    EXPECT_EQ(shown()["sessionSettings"]["maxBurstLength"], 1048576);
    EXPECT_EQ(shown(target2)["sessionSettings"]["maxBurstLength"], 262144);

    smisd.stop();
    const Smisd again(array.state());
    EXPECT_EQ(Client(again).get(named(sessionSettings, sessionKey)).each("MaxDataBurstLength"),
              std::vector<std::string>{"1048576"});
}

TEST_F(LoginParameters, OfAConnectionAreReadAgainByTheNumbersOfTheirValueMaps) {
    EXPECT_EQ(changeConnection(number("MaxReceiveDataSegmentLength", "65536") +
                               property("PrimaryHeaderDigestMethod", "uint16", "2") +
                               property("SecondaryDataDigestMethod", "uint16", "4") +
                               property("PrimaryAuthenticationMethod", "uint16", "6") +
                               property("RequestingMarkersOnReceive", "boolean", "TRUE")),
              "");
    EXPECT_THAT(connection(), IsSupersetOf({"MaxReceiveDataSegmentLength: uint32 65536",
                                            "PrimaryHeaderDigestMethod: uint16 2",
                                            "SecondaryDataDigestMethod: uint16 4",
                                            "PrimaryAuthenticationMethod: uint16 6",
                                            "RequestingMarkersOnReceive: boolean TRUE"}));
    EXPECT_EQ(shown()["connectionSettings"]["primaryHeaderDigest"], "None");
}

TEST_F(LoginParameters, AreSetAndGotAsSingleProperties) {
    const Xml path = named(sessionSettings, sessionKey);
    const Parameters set = {{"InstanceName", path},
                            {"PropertyName", value("MaxOutstandingR2T")},
                            {"NewValue", value("16")}};
    EXPECT_EQ(client.call("SetProperty", set).error(), "");
    EXPECT_THAT(session(), Contains("MaxOutstandingR2T: uint32 16"));
}

// Statistics

TEST_F(LoginParameters, StatisticsCountLoginsAndTheirRefusals) {
    const auto refusedLogin = [&](const std::string& host, const std::string& input) {
        return run({ARRAYCTL, "--state", array.state().string(), "session", "login", host, target1},
                   input)
            .status;
    };
    array.arrayctl({"secret", "set", "initiator", host1}, "the secret of host1\n");
    EXPECT_EQ(refusedLogin(host1, "a wrong secret\n"), 1);
    EXPECT_EQ(refusedLogin(host2, ""), 1); // has no grant
    const std::string live =
        array.arrayctl({"session", "login", host1, target1}, "the secret of host1\n").substr(0, 14);

    const std::string key = shown()["loginStatistics"]["key"];
    const auto logins = [&] {
        return client.get(named("CIM_iSCSILoginStatistics", key)).properties();
    };
    EXPECT_THAT(logins(), IsSupersetOf({"LoginFailures: uint64 2", "SuccessfulLogins: uint64 1",
                                        "AuthenticationLoginFailures: uint64 1",
                                        "AuthorizationLoginFailures: uint64 1",
                                        "NormalLogouts: uint64 0", "LastLoginFailureType: uint16 4",
                                        "LastLoginFailureRemoteNodeName: string "
                                        "iqn.2026-01.com.example:host2"}));
    EXPECT_EQ(client.get(named("CIM_iSCSISessionStatistics", live)).error(), "");
    EXPECT_THAT(client.get(named("CIM_iSCSISessionFailures", key)).properties(),
                Contains("SessionFailures: uint64 0"));
    array.arrayctl({"session", "logout", live});
    EXPECT_THAT(logins(), Contains("NormalLogouts: uint64 1"));
    EXPECT_EQ(client.get(named("CIM_iSCSISessionStatistics", live)).error(),
              "6 CIM_ERR_NOT_FOUND: " + live);
}

TEST_F(LoginParameters, StatisticsOfAPortalAreTraced) {
    EXPECT_THAT(client.get(named("Ovrin_MACStatistics", "Ovrin:09000001")).properties(),
                Contains("FramesReceived: uint64 0"));
    EXPECT_THAT(smisd.stop().out, HasSubstr("\ngi: MACStatistics \n"));
}

} // namespace
} // namespace wire
