#include "commandline/ManualPage.h"

#include <sstream>
#include <string>

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include "commandline/Version.h"

using testing::HasSubstr;
using testing::Not;

namespace {

constexpr commandline::ExitStatus statuses[] = {{0, "Done"}, {7, "Out of 7-bit numbers"}};

class ManualPage : public testing::Test {
protected:
    ManualPage() { program.set_version_flag("--version", "1.0"); }

    std::string page() const {
        std::ostringstream out;
        commandline::writeManualPage(out, program, {"does it", "It is quick.", statuses});
        return out.str();
    }

    CLI::App program{"Does what is asked", "doit"};
    bool flag = false;
};

TEST_F(ManualPage, BeginsWithNameVersionAndPurpose) {
    EXPECT_THAT(page(),
                testing::StartsWith(std::string(".TH DOIT 8 \"\" \"doit ") + commandline::version +
                                    "\"\n.SH NAME\ndoit \\- does it\n.SH SYNOPSIS\n"));
    EXPECT_THAT(page(), HasSubstr(".SH DESCRIPTION\nDoes what is asked.\nIt is quick.\n"));
}

TEST_F(ManualPage, SaysWhetherThereMustBeACommand) {
    EXPECT_THAT(page(), HasSubstr("[\\fIoptions\\fR] [\\fIcommand\\fR]\n"));
    program.require_subcommand(1);
    EXPECT_THAT(page(), HasSubstr("[\\fIoptions\\fR] \\fIcommand\\fR\n"));
}

TEST_F(ManualPage, TellsOfEachOptionItsKindOfValueAndItsDefault) {
    std::string text;
    int count = 0;
    program.add_flag("--quick", flag, "At once");
    program.add_option("--at", text, "Where")->type_name("ADDR:PORT");
    program.add_option("--count", count, "How many")
        ->type_name("NUMBER")
        ->check(CLI::PositiveNumber)
        ->check(CLI::Range(1U, 9U));
    program.add_option("--to", text, "Where to")->type_name("FILE")->default_str("here");
    program.add_option("--how", text, "In which way")->check(CLI::IsMember({"well", "badly"}));
    EXPECT_THAT(page(), HasSubstr(".TP\n.B \"\\-\\-quick\"\nAt once.\n"));
    EXPECT_THAT(page(), HasSubstr(".B \"\\-\\-at ADDR:PORT\"\n"));
    EXPECT_THAT(page(), HasSubstr(".B \"\\-\\-count NUMBER\"\n"));
    EXPECT_THAT(page(), HasSubstr(".TP\n.B \"\\-\\-to FILE\"\nWhere to (default: here).\n"));
    EXPECT_THAT(page(), HasSubstr(".B \"\\-\\-how well|badly\"\n"));
}

TEST_F(ManualPage, TellsOfHelpAndVersionOnce) {
    const std::string text = page();
    for (const std::string option : {".B \"\\-\\-help\"\n", ".B \"\\-\\-version\"\n"}) {
        EXPECT_THAT(text, HasSubstr(option));
        EXPECT_EQ(text.find(option), text.rfind(option)) << option;
    }
}

TEST_F(ManualPage, PutsAGroupOfOptionsUnderItsName) {
    int number = 0;
    program.add_option("--first", number, "One");
    program.add_option("--most", number, "Two")->group("Limits");
    program.add_option("--least", number, "Three")->group("Limits");
    const std::string text = page();
    const std::size_t heading = text.find(".SS \"Limits\"\n");
    EXPECT_GT(heading, text.find("\\-\\-first"));
    EXPECT_LT(heading, text.find("\\-\\-most"));
    EXPECT_EQ(heading, text.rfind(".SS \"Limits\"\n"));
}

TEST_F(ManualPage, TellsOfEachCommandWithItsArguments) {
    std::string text;
    CLI::App* family = program.add_subcommand("volume", "Volumes")->require_subcommand(1);
    CLI::App* create = family->add_subcommand("create", "Make one");
    create->add_option("NAME", text, "Its name")->required();
    create->add_flag("--empty", flag, "Without content");
    EXPECT_THAT(page(), HasSubstr(".SH COMMANDS\n.SS \"volume create NAME [\\-\\-empty]\"\n"
                                  "Make one.\n.TP\n.B \"NAME\"\nIts name.\n"));
    EXPECT_THAT(page(), Not(HasSubstr(".SS \"volume\"")));
}

TEST_F(ManualPage, TellsTheExitStatuses) {
    EXPECT_THAT(page(), HasSubstr(".SH EXIT STATUS\n.TP\n.B \"0\"\nDone.\n.TP\n.B \"7\"\n"
                                  "Out of 7\\-bit numbers.\n"));
}

// A line that begins with a dot would be a request to troff, and a backslash an escape.
TEST_F(ManualPage, KeepsTextApartFromTroff) {
    program.add_flag("--odd", flag, ".SH is \\n here");
    EXPECT_THAT(page(), HasSubstr("\n\\&.SH is \\en here.\n"));
}

} // namespace
