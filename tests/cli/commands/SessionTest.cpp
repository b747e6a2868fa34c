#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class SessionCommands : public Cli {
protected:
    SessionCommands() { importSmallArray(); }

    nlohmann::ordered_json logins() const {
        return jsonOf({"target", "show", target})["loginStatistics"];
    }

    const std::string target = "iqn.2026-01.com.example:t1";
    const std::string host1 = "iqn.2026-01.com.example:host1"; // without a secret
    const std::string host2 = "iqn.2026-01.com.example:host2"; // with one
    const std::string host3 = "eui.02004567a425678d";          // without a grant
};

TEST_F(SessionCommands, LoginMakesOneConnectionThroughTheFirstEndpoint) {
    EXPECT_EQ(outputOf({"session", "login", host1, target}), "Ovrin:11000001\n");
    const auto list = jsonOf({"session", "list"});
    ASSERT_EQ(list.size(), 1U);
    EXPECT_EQ(list[0]["initiator"], host1);
    EXPECT_EQ(list[0]["target"], target);
    EXPECT_EQ(list[0]["connections"].dump(), R"(["192.0.2.10:3260"])");
    EXPECT_EQ(logins()["successfulLogins"], 1);
}

TEST_F(SessionCommands, LoginThroughAnEndpointThatIsNamed) {
    outputOf({"session", "login", host1, target, "--endpoint", "[2001:db8::1]:860"});
    EXPECT_EQ(jsonOf({"session", "list"})[0]["connections"].dump(), R"(["[2001:db8::1]:860"])");
}

TEST_F(SessionCommands, AnEndpointMayStandBeforeTheNames) {
    outputOf({"session", "login", "--endpoint", "Ovrin:09000002", host1, target});
    EXPECT_EQ(jsonOf({"session", "list"})[0]["connections"].dump(), R"(["[2001:db8::1]:860"])");
}

TEST_F(SessionCommands, LoginWithMoreConnectionsThanTheTargetAllowsIsRefused) {
    EXPECT_THAT(refusalOf({"session", "login", host1, target, "--endpoint", "192.0.2.10",
                           "--endpoint", "[2001:db8::1]:860"}),
                StartsWith("arrayctl: "));
    EXPECT_EQ(jsonOf({"session", "list"}).size(), 0U);
}

TEST_F(SessionCommands, LoginThroughAnUnknownEndpointIsRefused) {
    EXPECT_EQ(refusalOf({"session", "login", host1, target, "--endpoint", "192.0.2.99"}),
              "arrayctl: There is no endpoint \"192.0.2.99\".\n");
}

TEST_F(SessionCommands, LoginWithoutAGrantIsRefusedAndCounted) {
    EXPECT_THAT(refusalOf({"session", "login", host3, target}), StartsWith("arrayctl: "));
    EXPECT_EQ(jsonOf({"session", "list"}).size(), 0U);
    EXPECT_EQ(logins()["authorizationFailures"], 1);
}

TEST_F(SessionCommands, LoginProvesTheSecretThatItReads) {
    outputOf({"session", "login", host2, target}, "host-secret-22\n");
    EXPECT_EQ(jsonOf({"session", "list"}).size(), 1U);
}

TEST_F(SessionCommands, LoginWithAWrongSecretIsRefusedAndCounted) {
    const std::string message = refusalOf({"session", "login", host2, target}, "wrong-secret\n");
    EXPECT_THAT(message, StartsWith("arrayctl: "));
    EXPECT_THAT(message, Not(HasSubstr("secret-")));
    EXPECT_THAT(message, Not(HasSubstr("wrong-secret")));
    EXPECT_EQ(jsonOf({"session", "list"}).size(), 0U);
    EXPECT_EQ(logins()["authenticationFailures"], 1);
}

TEST_F(SessionCommands, LoginWithoutTheSecretThatIsNeededIsRefused) {
    EXPECT_EQ(refusalOf({"session", "login", host2, target}),
              "arrayctl: No secret was given on standard input.\n");
}

TEST_F(SessionCommands, LogoutEndsASessionByItsKey) {
    outputOf({"session", "login", host1, target});
    outputOf({"session", "login", host1, target});
    EXPECT_EQ(outputOf({"session", "logout", "Ovrin:11000001"}), "");
    EXPECT_EQ(jsonOf({"session", "list"})[0]["key"], "Ovrin:11000002");
    EXPECT_EQ(logins()["normalLogouts"], 1);
}

TEST_F(SessionCommands, LogoutEndsAllSessionsOfAPair) {
    outputOf({"session", "login", host1, target});
    outputOf({"session", "login", host1, target});
    outputOf({"session", "login", host2, target}, "host-secret-22");
    const std::string another = "iqn.2026-01.com.example:t2";
    outputOf({"grant", "create", another, host1});
    outputOf({"session", "login", host1, another});
    outputOf({"session", "logout", host1, target});
    const auto list = jsonOf({"session", "list"});
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0]["initiator"], host2);
    EXPECT_EQ(list[1]["target"], another);
    EXPECT_EQ(refusalOf({"session", "logout", host1, target}),
              "arrayctl: Initiator \"" + host1 + "\" has no session with target \"" + target +
                  "\".\n");
}

TEST_F(SessionCommands, CreateAndDeleteAreOtherNamesOfLoginAndLogout) {
    EXPECT_EQ(outputOf({"session", "create", host1, target}), "Ovrin:11000001\n");
    outputOf({"session", "delete", "Ovrin:11000001"});
    EXPECT_EQ(jsonOf({"session", "list"}).size(), 0U);
}

TEST_F(SessionCommands, LogoutOfWhatIsNotThereIsRefused) {
    EXPECT_EQ(refusalOf({"session", "logout", "Ovrin:11000009"}),
              "arrayctl: There is no session \"Ovrin:11000009\".\n");
}

} // namespace
