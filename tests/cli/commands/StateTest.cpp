#include <fstream>

#include "tests/cli/Cli.h"

using testing::HasSubstr;

namespace {

using StateCommands = Cli;

TEST_F(StateCommands, CheckOfASoundArrayFindsNothing) {
    importSmallArray();
    EXPECT_EQ(outputOf({"check"}), "");
    EXPECT_EQ(jsonOf({"check"}), nlohmann::ordered_json::array());
}

TEST_F(StateCommands, CheckOfADamagedArrayIsRefused) {
    importSmallArray();
    std::filesystem::resize_file(state / "array.db", 1000);
    const Result result = run({"check"});
    EXPECT_EQ(result.status, cli::BadState);
    EXPECT_THAT(result.err, HasSubstr(state.string()));
}

TEST_F(StateCommands, BackupIsTheWholeArray) {
    importSmallArray();
    const std::string before = outputOf({"export", "--with-secrets"});
    const auto copy = directory / "copy.db";
    outputOf({"backup", copy.string()});
    std::filesystem::remove_all(state);
    std::filesystem::create_directory(state);
    std::filesystem::permissions(state, std::filesystem::perms::owner_all);
    std::filesystem::rename(copy, state / "array.db");
    EXPECT_EQ(outputOf({"export", "--with-secrets"}), before);
}

TEST_F(StateCommands, BackupNeverOverwrites) {
    importSmallArray();
    const auto copy = directory / "copy.db";
    std::ofstream(copy) << "mine";
    EXPECT_THAT(stateFailureOf({"backup", copy.string()}), HasSubstr(copy.string()));
    EXPECT_EQ(std::filesystem::file_size(copy), 4U);
}

} // namespace
