#include <fstream>

#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::Not;

namespace {

class CompletionCommand : public Cli {
protected:
    // What bash proposes for the last word of a command line, a proposal a line.
    std::string proposalsFor(const std::string& words) const {
        const auto script = directory / "arrayctl.bash";
        std::ofstream(script) << outputOf({"completion"});
        const std::string line = "cd '" + directory.string() + "' && bash -c '. " +
                                 script.string() + "; COMP_WORDS=(" + words +
                                 "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _arrayctl; "
                                 "printf \"%s\\n\" \"${COMPREPLY[@]}\"' 2>&1";
        std::string out;
        FILE* pipe = popen(line.c_str(), "r");
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
            out.push_back(static_cast<char>(c));
        }
        pclose(pipe);
        return out;
    }
};

TEST_F(CompletionCommand, ProposesCommandsByTheirBeginning) {
    EXPECT_EQ(proposalsFor("arrayctl se"), "session\nsecret\n");
    EXPECT_EQ(proposalsFor("arrayctl volume c"), "create\n");
    EXPECT_EQ(proposalsFor("arrayctl --json vol"), "volume\n");
    EXPECT_EQ(proposalsFor("arrayctl --json volume \"\""), "list\ncreate\ndelete\n");
}

TEST_F(CompletionCommand, ProposesTheOptionsOfTheCommandAndOfAll) {
    EXPECT_EQ(proposalsFor("arrayctl volume create --"),
              "--size\n--element-name\n--state\n--json\n");
    EXPECT_EQ(proposalsFor("arrayctl --s"), "--state\n");
}

TEST_F(CompletionCommand, ProposesDirectoriesFilesAndChoicesWhereTheyAreWanted) {
    std::filesystem::create_directory(directory / "found.directory");
    std::ofstream(directory / "found.json") << "{}";
    EXPECT_EQ(proposalsFor("arrayctl --state fou"), "found.directory\n");
    EXPECT_THAT(proposalsFor("arrayctl import found.j"), HasSubstr("found.json\n"));
    EXPECT_EQ(proposalsFor("arrayctl secret set i"), "initiator\n");
    EXPECT_EQ(proposalsFor("arrayctl volume create x --size 1"), "\n");
}

} // namespace

using testing::HasSubstr;

namespace {

using ManCommand = Cli;

TEST_F(ManCommand, TellsOfEachCommand) {
    const std::string page = outputOf({"man"});
    EXPECT_THAT(page, testing::StartsWith(".TH ARRAYCTL 8 "));
    EXPECT_THAT(page, HasSubstr(".B \"\\-\\-state DIR\"\n"));
    for (const char* command :
         {"import FILE", "export", "show", "events", "check", "backup", "volume list",
          "target show", "initiator create", "endpoint delete", "unit create", "grant delete",
          "session login", "session logout", "secret set", "completion", "man"}) {
        EXPECT_THAT(page, HasSubstr(std::string(".SS \"") + command)) << command;
    }
}

TEST_F(ManCommand, TellsTheExitStatuses) {
    EXPECT_THAT(outputOf({"man"}), HasSubstr(".B \"4\"\nThe description has a mistake"));
}

} // namespace
