#include <fstream>

#include "tests/cli/Cli.h"

using testing::HasSubstr;

namespace {

using ManCommand = Cli;

TEST_F(ManCommand, TellsOfEachCommandWithItsArgumentsAndOptions) {
    const std::string page = outputOf({"man"});
    EXPECT_THAT(page, testing::StartsWith(".TH ARRAYCTL 8\n.SH NAME\narrayctl \\- "));
    EXPECT_THAT(page, HasSubstr(".B \"\\-\\-state DIR\"\n"));
    EXPECT_THAT(page, HasSubstr(".B \"\\-\\-json\"\n"));
    EXPECT_THAT(page, HasSubstr(".SS \"import FILE\"\nFill an empty or new array from a "
                                "description.\n.TP\n.B \"FILE\"\n"));
    EXPECT_THAT(page, HasSubstr(".SS \"volume create NAME \\-\\-size TEXT"));
    for (const char* command :
         {"export", "show", "events", "check", "backup", "volume list", "target show",
          "initiator create", "endpoint delete", "unit create", "grant delete", "session login",
          "session logout", "secret set", "completion", "man"})
        EXPECT_THAT(page, HasSubstr(std::string(".SS \"") + command)) << command;
}

TEST_F(ManCommand, TellsTheExitStatuses) {
    const std::string page = outputOf({"man"});
    for (const char* status : {"0", "1", "2", "3", "4"})
        EXPECT_THAT(page, HasSubstr(std::string(".B \"") + status + "\"\n")) << status;
}

TEST_F(ManCommand, IsAPageThatManReadsWithoutAWarning) {
    if (std::system("command -v man >/dev/null && command -v troff >/dev/null") != 0)
        GTEST_SKIP() << "there is no man to read it with";
    const auto page = directory / "arrayctl.8";
    std::ofstream(page) << outputOf({"man"});
    const std::string read =
        "MANROFFOPT= man --warnings -l " + page.string() + " 2>&1 >/dev/null | ( ! grep . )";
    EXPECT_EQ(std::system(read.c_str()), 0);
}

} // namespace
