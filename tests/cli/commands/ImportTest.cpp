#include <algorithm>
#include <fstream>

#include "cli/NewState.h"
#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class ImportCommand : public Cli {
protected:
    std::string write(const std::string& text) const {
        const auto file = directory / "array.json";
        std::ofstream(file) << text;
        return file;
    }

    // How many files there are beside the description.
    std::ptrdiff_t filesBeside(const std::filesystem::path& file) const {
        using std::filesystem::directory_iterator;
        return std::count_if(directory_iterator(directory), directory_iterator(),
                             [&](const auto& entry) { return entry.path() != file; });
    }
};

TEST_F(ImportCommand, MakesAPrivateStateDirectoryAndSaysWhatItImported) {
    const std::string file = write(R"({ "host": "h", "system": "s",
        "targets": [ { "name": "iqn.2026-01.com.example:t1" } ] })");
    EXPECT_EQ(outputOf({"import", file}),
              "Imported 0 endpoints, 0 volumes, 1 target, 0 initiators, "
              "0 logical units.\n");
    EXPECT_EQ(std::filesystem::status(state).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(ImportCommand, GivesProgramsTheCounts) {
    const std::string file = write(R"({ "host": "h", "system": "s",
        "targets": [ { "name": "iqn.2026-01.com.example:t1" } ] })");
    EXPECT_EQ(jsonOf({"import", file}).dump(),
              R"({"endpoints":0,"volumes":0,"targets":1,"initiators":0,"logicalUnits":0})");
}

TEST_F(ImportCommand, NamesTheFileAndTheCulpritAndLeavesNothingBehind) {
    const std::string file = write(R"({ "host": "h", "system": "s",
        "targets": [ { "name": "iqn.2026-01.com.example:t1", "color": "red" } ] })");
    EXPECT_EQ(mistakeOf({"import", file}),
              "arrayctl: " + file + ": /targets/0/color: this member is unknown\n");
    EXPECT_EQ(filesBeside(file), 0);
}

TEST_F(ImportCommand, OfAMistakeLeavesADirectoryThatWasThere) {
    std::filesystem::create_directory(state);
    std::filesystem::permissions(state, std::filesystem::perms::owner_all);
    EXPECT_THAT(mistakeOf({"import", "-"}, "{"), HasSubstr("parse error"));
    EXPECT_TRUE(std::filesystem::exists(state));
    importSmallArray();
}

TEST_F(ImportCommand, IntoADirectoryWithoutAParentIsRefused) {
    state = directory / "a" / "b";
    EXPECT_EQ(stateFailureOf({"import", "-"}),
              "arrayctl: " + state.string() + ": No such file or directory.\n");
}

TEST_F(ImportCommand, OfAFileThatIsNotThereMakesNoStateDirectory) {
    EXPECT_EQ(refusalOf({"import", "/nowhere/array.json"}),
              "arrayctl: /nowhere/array.json: No such file or directory\n");
    EXPECT_FALSE(std::filesystem::exists(state));
}

TEST_F(ImportCommand, OfAFileThatIsNotThereMakesNoArrayInADirectoryThatWasThere) {
    std::filesystem::create_directory(state);
    std::filesystem::permissions(state, std::filesystem::perms::owner_all);
    EXPECT_EQ(refusalOf({"import", "/nowhere/array.json"}),
              "arrayctl: /nowhere/array.json: No such file or directory\n");
    EXPECT_TRUE(std::filesystem::is_empty(state));
}

TEST_F(ImportCommand, IntoAnArrayThatHasObjectsIsRefusedWithAdvice) {
    importSmallArray();
    const std::string before = outputOf({"export"});
    EXPECT_EQ(refusalOf({"import", write(R"({ "host": "h", "system": "s" })")}),
              "arrayctl: The array has objects already, and a description is imported only into an "
              "empty one; use another state directory.\n");
    EXPECT_EQ(outputOf({"export"}), before);
}

TEST_F(ImportCommand, MayBeRepeatedAfterAMistake) {
    EXPECT_THAT(mistakeOf({"import", "-"}, "{"), HasSubstr("-: parse error at line 1, column 2"));
    importSmallArray();
    EXPECT_EQ(jsonOf({"volume", "list"})[0]["key"], "Ovrin:17000001");
}

TEST_F(ImportCommand, TheDemoArrayCanBeImportedAndComesBackTheSame) {
    const std::string file = DEMO_ARRAY;
    outputOf({"import", file});
    std::ifstream text(file);
    EXPECT_EQ(nlohmann::json::parse(outputOf({"export"})), nlohmann::json::parse(text));
}

class Leftovers : public Cli {
protected:
    const std::filesystem::path left = directory / ".state.import-aB3xYz";
    const std::string told =
        "arrayctl: removed " + left.string() + ", left by an import that was ended\n";

    Leftovers() {
        std::filesystem::create_directory(left);
        std::ofstream(left / "array.db") << "secrets";
        std::ofstream(left / "unfinished-import");
    }
};

TEST_F(Leftovers, AreClearedByTheNextImport) {
    const Result result = run({"import", "-"}, R"({"host":"h","system":"s"})");
    EXPECT_EQ(result.status, cli::Done);
    EXPECT_EQ(result.err, told);
    EXPECT_FALSE(std::filesystem::exists(left));
}

TEST_F(Leftovers, AreClearedByAnyCommand) {
    const Result result = run({"volume", "list"});
    EXPECT_THAT(result.err, StartsWith(told));
    EXPECT_FALSE(std::filesystem::exists(left));
}

TEST_F(Leftovers, AreNotWhatSomebodyWorksOn) {
    std::filesystem::remove_all(left);
    const cli::NewState other(state);
    // The first has no file that marks an import, the others have other names.
    const std::vector<std::string> mine = {".state.import-backup", "state.new-backup",
                                           ".state.import-is-mine", ".state.import-a.3xYz"};
    for (const std::string& name : mine) {
        std::filesystem::create_directory(directory / name);
        if (name != mine.front()) {
            std::ofstream(directory / name / "unfinished-import");
        }
    }
    run({"import", "-"}, R"({"host":"h","system":"s"})");
    EXPECT_TRUE(std::filesystem::exists(other.directory()));
    for (const std::string& name : mine) {
        EXPECT_TRUE(std::filesystem::exists(directory / name)) << name;
    }
}

} // namespace
