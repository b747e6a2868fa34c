#include "tests/cli/Cli.h"

namespace {

using EndpointCommands = Cli;

TEST_F(EndpointCommands, ListShowsAddressesAndPorts) {
    importSmallArray();
    EXPECT_EQ(outputOf({"endpoint", "list"}), "KEY             ADDRESS      PORT  CONNECTIONS\n"
                                              "Ovrin:09000001  192.0.2.10   3260  0\n"
                                              "Ovrin:09000002  2001:db8::1  860   0\n");
}

TEST_F(EndpointCommands, CreateTakesAPortalAsPeopleWriteIt) {
    importSmallArray();
    EXPECT_EQ(outputOf({"endpoint", "create", "192.0.2.11"}), "Ovrin:09000003\n");
    outputOf({"endpoint", "create", "[2001:db8::2]:861"});
    const auto list = jsonOf({"endpoint", "list"});
    EXPECT_EQ(list[2]["address"], "192.0.2.11");
    EXPECT_EQ(list[2]["port"], 3260);
    EXPECT_EQ(list[3]["address"], "2001:db8::2");
    EXPECT_EQ(list[3]["port"], 861);
}

TEST_F(EndpointCommands, CreateWithABadPortIsWrongUsage) {
    importSmallArray();
    const Result result = run({"endpoint", "create", "192.0.2.11:65536"});
    EXPECT_EQ(result.status, cli::WrongUsage);
    EXPECT_THAT(result.err,
                testing::StartsWith("arrayctl: \"65536\" is no whole number from 0 to 65535"));
}

TEST_F(EndpointCommands, CreateWithABadAddressIsRefusedByTheArray) {
    importSmallArray();
    EXPECT_THAT(refusalOf({"endpoint", "create", "array1"}), testing::HasSubstr("\"array1\""));
}

TEST_F(EndpointCommands, DeleteTakesThePortalOrTheKey) {
    importSmallArray();
    outputOf({"endpoint", "delete", "[2001:db8::1]:860"});
    outputOf({"endpoint", "delete", "Ovrin:09000001"});
    EXPECT_EQ(jsonOf({"endpoint", "list"}).size(), 0U);
    EXPECT_EQ(refusalOf({"endpoint", "delete", "192.0.2.10"}),
              "arrayctl: There is no endpoint \"192.0.2.10\".\n");
}

TEST_F(EndpointCommands, DeleteOfAnEndpointInUseIsRefused) {
    importSmallArray();
    outputOf({"session", "login", "iqn.2026-01.com.example:host1", "iqn.2026-01.com.example:t1"});
    EXPECT_THAT(refusalOf({"endpoint", "delete", "192.0.2.10"}), testing::StartsWith("arrayctl: "));
    EXPECT_EQ(jsonOf({"endpoint", "list"}).size(), 2U);
}

} // namespace
