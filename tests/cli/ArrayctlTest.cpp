#include "cli/Arrayctl.h"

#include <fstream>

#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Arrayctl = Cli;

TEST_F(Arrayctl, HelpListsTheCommandsAndSucceeds) {
    const Result result = run({"--help"});
    EXPECT_EQ(result.status, cli::Done);
    for (const char* command :
         {"import", "export", "show", "events", "check", "backup", "volume", "target", "initiator",
          "endpoint", "unit", "grant", "session", "secret"}) {
        EXPECT_THAT(result.out, HasSubstr(std::string("\n  ") + command + " "));
    }
}

TEST_F(Arrayctl, HelpOfACommandSucceeds) {
    const Result result = run({"volume", "create", "--help"});
    EXPECT_EQ(result.status, cli::Done);
    EXPECT_THAT(result.out, HasSubstr("--size"));
}

TEST_F(Arrayctl, WrongUsageSaysWhatIsWrongAndWhereToLook) {
    const std::vector<std::vector<std::string>> wrong = {{},
                                                         {"volumes"},
                                                         {"volume"},
                                                         {"volume", "make"},
                                                         {"volume", "list", "x"},
                                                         {"--colour"},
                                                         {"volume", "create", "6001"}};
    for (const auto& arguments : wrong) {
        const Result result = run(arguments);
        EXPECT_EQ(result.status, cli::WrongUsage) << testing::PrintToString(arguments);
        EXPECT_THAT(result.err, StartsWith("arrayctl: "));
        EXPECT_THAT(result.err, testing::EndsWith("\nTry \"arrayctl --help\".\n"));
        EXPECT_EQ(result.out, "");
    }
}

TEST_F(Arrayctl, WithoutAnArrayEachCommandFails) {
    const std::vector<std::vector<std::string>> commands = {
        {"show"},
        {"export"},
        {"volume", "list"},
        {"target", "create", "iqn.2026-01.com.example:t"}};
    for (const auto& arguments : commands) {
        EXPECT_THAT(stateFailureOf(arguments),
                    testing::AllOf(StartsWith("arrayctl: "), HasSubstr(state.string())));
        EXPECT_FALSE(std::filesystem::exists(state));
    }
}

TEST_F(Arrayctl, OptionsOfAllCommandsMayStandBeforeOrAfterTheCommand) {
    importSmallArray();
    EXPECT_EQ(run({"--json", "volume", "list"}).out, run({"volume", "list", "--json"}).out);
    EXPECT_THAT(run({"volume", "--json", "list"}).out, StartsWith("["));
}

TEST_F(Arrayctl, OutputThatCannotBeWrittenIsAnError) {
    importSmallArray();
    std::istringstream in;
    std::ostream out(nullptr);
    std::ostringstream err;
    cli::Context context(in, out, err);
    const std::string directory_ = state.string();
    const char* const argv[] = {"arrayctl", "--state", directory_.c_str(), "show"};
    EXPECT_EQ(cli::arrayctl(4, argv, context), cli::Refused);
    EXPECT_EQ(err.str(), "arrayctl: The output cannot be written.\n");
}

TEST_F(Arrayctl, TheStateDirectoryMayComeFromTheEnvironment) {
    importSmallArray();
    setenv("DRAV_STATE_DIR", state.c_str(), 1);
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    cli::Context context(in, out, err);
    const char* const argv[] = {"arrayctl", "grant", "list"};
    EXPECT_EQ(cli::arrayctl(3, argv, context), cli::Done) << err.str();
    EXPECT_THAT(out.str(), HasSubstr("iqn.2026-01.com.example:host1"));
    unsetenv("DRAV_STATE_DIR");
}

// A name of an earlier array, an argument, an event: whatever is shown.
TEST_F(Arrayctl, ShowsNoCharacterThatATerminalActsOn) {
    importSmallArray();
    const std::string mark = "\xE2\x80\xAE";
    outputOf({"volume", "create", "6001", "--size", "1", "--element-name", "a" + mark + "b"});
    EXPECT_THAT(outputOf({"volume", "list"}), HasSubstr("  a\\u202Eb  "));
    EXPECT_THAT(outputOf({"--json", "volume", "list"}), HasSubstr("\"a\\u202Eb\""));
    EXPECT_EQ(jsonOf({"volume", "list"}).back()["elementName"], "a" + mark + "b");
    EXPECT_THAT(outputOf({"export"}), HasSubstr("\"a\\u202Eb\""));
    EXPECT_EQ(run({"volume", "\x1B[2J" + mark}).err.find_first_of("\x1B\xE2"), std::string::npos);
    std::ofstream(state / "events.jsonl") << "\x1B[2J\xC2\x9B"
                                             "2J\r"
                                          << mark << '\n';
    EXPECT_EQ(outputOf({"events"}), "\\u001B[2J\\u009B2J\\u000D\\u202E\n");
    EXPECT_EQ(outputOf({"--json", "events"}), "\\u001B[2J\\u009B2J\\u000D\\u202E\n");
}

} // namespace
