#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::Not;

namespace {

using ExportCommand = Cli;

TEST_F(ExportCommand, LeavesSecretsOutUnlessAsked) {
    importSmallArray();
    EXPECT_THAT(outputOf({"export"}), Not(HasSubstr("-secret-")));
    EXPECT_THAT(outputOf({"export", "--with-secrets"}),
                testing::AllOf(HasSubstr("target-secret-1"), HasSubstr("host-secret-22")));
}

TEST_F(ExportCommand, WithSecretsMakesTheSameArrayAgain) {
    importSmallArray();
    outputOf({"session", "login", "iqn.2026-01.com.example:host1", "iqn.2026-01.com.example:t1",
              "--endpoint", "[2001:db8::1]:860"});
    const std::string description = outputOf({"export", "--with-secrets"});
    EXPECT_THAT(description, HasSubstr("\"connections\": [ { \"endpoint\": 1 } ]"));
    std::filesystem::rename(state, directory / "other");
    import(description);
    EXPECT_EQ(outputOf({"export", "--with-secrets"}), description);
}

TEST_F(ExportCommand, SaysThatItLeftOutUnitsWithoutAVolume) {
    importSmallArray();
    outputOf({"volume", "delete", "mail"});
    const Result result = run({"export"});
    EXPECT_EQ(result.status, cli::Done);
    EXPECT_EQ(result.err, "arrayctl: left out 1 logical unit without a volume\n");
    EXPECT_THAT(result.out, HasSubstr("\"logicalUnits\": []"));
}

TEST_F(ExportCommand, WithoutAnArrayIsRefusedAndMakesNone) {
    EXPECT_THAT(stateFailureOf({"export"}), HasSubstr(state.string()));
    EXPECT_FALSE(std::filesystem::exists(state));
}

} // namespace
