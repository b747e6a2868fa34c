// A client reads and changes login parameters, and reads statistics.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::StartsWith;

namespace wire {
namespace {

const std::string mismatch = "1 CIM_ERR_FAILED: type mismatch";

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
    // Whether a change is refused with this error, and nothing of it stored.
    void expectRefused(const Xml& properties, const std::string& error) const {
        const auto before = session();
        EXPECT_EQ(changeSession(properties), error) << properties;
        EXPECT_EQ(session(), before);
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

TEST_F(LoginParameters, OutOfRangeAreRefused) {
    expectRefused(number("ErrorRecoveryLevelPreference", "3"),
                  "1 CIM_ERR_FAILED: ErrorRecoveryLevel 3 of " + sessionKey +
                      " is out of range: it must be from 0 to 2 (RFC 7143 section 13.20).");
    for (const auto& [name, text] : {std::pair("MaxConnectionsPerSession", "0"),
                                     std::pair("MaxConnectionsPerSession", "65536"),
                                     std::pair("MaxDataBurstLength", "16777216"),
                                     std::pair("DefaultTimeToWaitPreference", "3601")}) {
        EXPECT_THAT(changeSession(number("MaxOutstandingR2T", "2") + number(name, text)),
                    HasSubstr(text + std::string(" of " + sessionKey + " is out of range")));
    }
    EXPECT_THAT(session(), Contains("MaxOutstandingR2T: uint32 1"));

    const auto before = connection();
    EXPECT_THAT(changeConnection(number("MaxReceiveDataSegmentLength", "511")),
                HasSubstr("out of range"));
    EXPECT_THAT(changeConnection(property("PrimaryHeaderDigestMethod", "uint16", "9")),
                HasSubstr("primary HeaderDigest"));
    EXPECT_EQ(connection(), before);
}

TEST_F(LoginParameters, InConflictAreRefusedAndBothAreNamed) {
    expectRefused(number("MaxUnsolicitedFirstDataBurstLength", "262145"),
                  "1 CIM_ERR_FAILED: FirstBurstLength 262145 of " + sessionKey +
                      " is longer than its MaxBurstLength 262144 (RFC 7143 section 13.14).");
    expectRefused(number("MaxDataBurstLength", "65535"),
                  "1 CIM_ERR_FAILED: FirstBurstLength 65536 of " + sessionKey +
                      " is longer than its MaxBurstLength 65535 (RFC 7143 section 13.14).");
    EXPECT_EQ(changeSession(number("MaxUnsolicitedFirstDataBurstLength", "300000") +
                            number("MaxDataBurstLength", "300000")),
              "");
}

TEST_F(LoginParameters, OfAnotherTypeStoreNothing) {
    const Xml good = number("MaxOutstandingR2T", "2");
    expectRefused(good + property("MaxDataBurstLength", "uint16", "1024"), mismatch);
    expectRefused(good + property("MaxDataBurstLength", "string", "1024"), mismatch);
    expectRefused(good + property("MaxDataBurstLength", "uint64", "1024"), mismatch);
    expectRefused(good + property("InitialR2TPreference", "uint32", "1"), mismatch);
    expectRefused(good + "<PROPERTY.ARRAY NAME=\"MaxDataBurstLength\" TYPE=\"uint32\">" +
                      values({"1024"}) + "</PROPERTY.ARRAY>",
                  mismatch);

    const auto before = connection();
    EXPECT_EQ(changeConnection(property("PrimaryDataDigestMethod", "uint32", "2")), mismatch);
    EXPECT_EQ(connection(), before);
}

TEST_F(LoginParameters, OfKeysThatNameNoSettings) {
    const auto modify = [&](const Xml& name) {
        return client.modify(name, sessionSettings, number("MaxOutstandingR2T", "2")).error();
    };
    EXPECT_EQ(modify(named(sessionSettings, "Ovrin:2300FFFF")),
              "1 CIM_ERR_FAILED: Ovrin:2300FFFF names no object of the class session setting.");
    EXPECT_THAT(modify(named(sessionSettings, connectionKey)),
                StartsWith("1 CIM_ERR_FAILED: " + connectionKey + " is of the class"));
    EXPECT_THAT(modify(named(sessionSettings, target1)),
                HasSubstr("names no object of the class session setting"));
    EXPECT_EQ(modify(instanceName(sessionSettings, {})), outOfBounds);
    EXPECT_EQ(client.get(named(sessionSettings, "Ovrin:2300FFFF")).error(),
              "6 CIM_ERR_NOT_FOUND: Ovrin:2300FFFF");
    EXPECT_EQ(client.get(named(sessionSettings, connectionKey)).error(),
              "6 CIM_ERR_NOT_FOUND: " + connectionKey);
    EXPECT_EQ(client.get(instanceName(sessionSettings, {})).error(), outOfBounds);
    EXPECT_THAT(session(), Contains("MaxOutstandingR2T: uint32 1"));
}

TEST_F(LoginParameters, AreNeitherListedNorCreatedNorDeleted) {
    const std::string refused = "7 CIM_ERR_NOT_SUPPORTED: iSCSISettings::";
    EXPECT_EQ(client.enumerate(sessionSettings).error(), "");
    EXPECT_THAT(client.enumerate(sessionSettings).names(), IsEmpty());
    EXPECT_EQ(client.enumerateNames(sessionSettings).error(), refused + "enumerateInstanceNames");
    EXPECT_EQ(client.call("DeleteInstance", {{"InstanceName", named(sessionSettings, sessionKey)}})
                  .error(),
              refused + "deleteInstance");
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

TEST_F(LoginParameters, StatisticsAreNotChanged) {
    EXPECT_EQ(client
                  .modify(named("CIM_iSCSILoginStatistics", "Ovrin:0E000001"),
                          "CIM_iSCSILoginStatistics", property("LoginFailures", "uint64", "7"))
                  .error(),
              "");
    EXPECT_THAT(client.get(named("CIM_iSCSILoginStatistics", "Ovrin:0E000001")).properties(),
                Contains("LoginFailures: uint64 0"));
}

} // namespace
} // namespace wire
