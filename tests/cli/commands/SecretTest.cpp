#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::Not;

namespace {

class SecretCommands : public Cli {
protected:
    SecretCommands() { importSmallArray(); }

    // The description of an object, with its secret.
    std::string secretOf(const char* section, std::size_t index) const {
        const auto all = nlohmann::json::parse(outputOf({"export", "--with-secrets"}));
        return all[section][index]["secret"];
    }

    const std::string host = "iqn.2026-01.com.example:host1";
    const std::string target = "iqn.2026-01.com.example:t2";
};

TEST_F(SecretCommands, SetTakesTheFirstLineOfStandardInput) {
    EXPECT_EQ(outputOf({"secret", "set", "initiator", host}, "a long secret\nmore\n"), "");
    EXPECT_EQ(secretOf("initiators", 0), "a long secret");
    outputOf({"secret", "set", "target", target}, "another secret");
    EXPECT_EQ(secretOf("targets", 1), "another secret");
}

TEST_F(SecretCommands, SetOfNothingIsRefusedAndKeepsTheSecret) {
    for (const char* input : {"", "\n"}) {
        EXPECT_EQ(refusalOf({"secret", "set", "target", "Ovrin:0E000001"}, input),
                  "arrayctl: No secret was given on standard input.\n");
    }
    EXPECT_EQ(secretOf("targets", 0), "target-secret-1");
}

TEST_F(SecretCommands, ASecretThatTheArrayRefusesIsNotShown) {
    const std::string message =
        refusalOf({"secret", "set", "initiator", host}, std::string(256, 'z') + "\n");
    EXPECT_THAT(message, testing::StartsWith("arrayctl: "));
    EXPECT_THAT(message, Not(HasSubstr("zz")));
    EXPECT_EQ(secretOf("initiators", 0), "");
}

TEST_F(SecretCommands, ASecretAsAnArgumentIsWrongUsageAndIsNotSet) {
    EXPECT_EQ(run({"secret", "set", "initiator", host, "a long secret"}).status, cli::WrongUsage);
    EXPECT_EQ(secretOf("initiators", 0), "");
}

TEST_F(SecretCommands, ClearLeavesNone) {
    outputOf({"secret", "clear", "target", "iqn.2026-01.com.example:t1"});
    EXPECT_EQ(secretOf("targets", 0), "");
}

TEST_F(SecretCommands, TheKindAndTheNameMustFit) {
    EXPECT_EQ(run({"secret", "set", "volume", "mail"}, "a long secret").status, cli::WrongUsage);
    EXPECT_EQ(refusalOf({"secret", "set", "target", host}, "a long secret"),
              "arrayctl: There is no target \"" + host + "\".\n");
}

} // namespace
