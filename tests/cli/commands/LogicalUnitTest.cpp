#include "tests/cli/Cli.h"

using testing::HasSubstr;

namespace {

using UnitCommands = Cli;

TEST_F(UnitCommands, CreateMapsAVolumeByWhatPeopleCallIt) {
    importSmallArray();
    EXPECT_EQ(outputOf({"unit", "create", "iqn.2026-01.com.example:t2", "mail", "--lun", "0",
                        "--access", "ro"}),
              "Ovrin:0F000002\n");
    EXPECT_EQ(outputOf({"unit", "list"}), "KEY             TARGET                      LUN  ACCESS "
                                          " VOLUME                            "
                                          "ELEMENT NAME  SIZE\n"
                                          "Ovrin:0F000001  iqn.2026-01.com.example:t1  1    rw     "
                                          " 60014051A2B3C4D5E6F7A8B9C0D1E2F3  "
                                          "mail          1 GiB\n"
                                          "Ovrin:0F000002  iqn.2026-01.com.example:t2  0    ro     "
                                          " 60014051A2B3C4D5E6F7A8B9C0D1E2F3  "
                                          "mail          1 GiB\n");
}

TEST_F(UnitCommands, AccessIsReadWriteUnlessSaid) {
    importSmallArray();
    outputOf({"unit", "create", "Ovrin:0E000002", "Ovrin:17000002", "--lun", "7"});
    outputOf(
        {"unit", "create", "Ovrin:0E000002", "Ovrin:17000003", "--lun", "8", "--access", "none"});
    const auto list = jsonOf({"unit", "list", "iqn.2026-01.com.example:t2"});
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0]["access"], "rw");
    EXPECT_EQ(list[1]["access"], "none");
}

TEST_F(UnitCommands, ListOfATargetShowsOnlyItsUnits) {
    importSmallArray();
    EXPECT_EQ(jsonOf({"unit", "list", "iqn.2026-01.com.example:t1"}).size(), 1U);
    EXPECT_EQ(outputOf({"unit", "list", "iqn.2026-01.com.example:t2"}), "none\n");
}

TEST_F(UnitCommands, ATakenLunIsRefusedByTheArray) {
    importSmallArray();
    EXPECT_THAT(
        refusalOf({"unit", "create", "iqn.2026-01.com.example:t1", "Ovrin:17000002", "--lun", "1"}),
        testing::AllOf(testing::StartsWith("arrayctl: "), HasSubstr("1")));
    EXPECT_EQ(jsonOf({"unit", "list"}).size(), 1U);
}

TEST_F(UnitCommands, ALunOutOfRangeIsRefusedByTheArray) {
    importSmallArray();
    EXPECT_THAT(refusalOf({"unit", "create", "iqn.2026-01.com.example:t1", "Ovrin:17000002",
                           "--lun", "16384"}),
                HasSubstr("16384"));
}

TEST_F(UnitCommands, WrongUsageOfCreateChangesNothing) {
    importSmallArray();
    const std::vector<std::vector<std::string>> wrong = {
        {"unit", "create", "iqn.2026-01.com.example:t1", "mail"},
        {"unit", "create", "iqn.2026-01.com.example:t1", "--lun", "2"},
        {"unit", "create", "iqn.2026-01.com.example:t1", "mail", "--lun", "x"},
        {"unit", "create", "iqn.2026-01.com.example:t1", "mail", "--lun", "4294967296"},
        {"unit", "create", "iqn.2026-01.com.example:t1", "mail", "--lun", "2", "--access", "rx"}};
    for (const auto& arguments : wrong) {
        EXPECT_EQ(run(arguments).status, cli::WrongUsage) << testing::PrintToString(arguments);
    }
    EXPECT_EQ(jsonOf({"unit", "list"}).size(), 1U);
}

TEST_F(UnitCommands, DeleteTakesTargetAndLunOrTheKey) {
    importSmallArray();
    outputOf({"unit", "create", "iqn.2026-01.com.example:t2", "mail", "--lun", "0"});
    outputOf({"unit", "delete", "iqn.2026-01.com.example:t1", "1"});
    outputOf({"unit", "delete", "Ovrin:0F000002"});
    EXPECT_EQ(jsonOf({"unit", "list"}).size(), 0U);
}

TEST_F(UnitCommands, DeleteOfWhatIsNotThereIsRefused) {
    importSmallArray();
    EXPECT_EQ(refusalOf({"unit", "delete", "iqn.2026-01.com.example:t1", "2"}),
              "arrayctl: Target \"iqn.2026-01.com.example:t1\" has no logical unit with LUN 2.\n");
    EXPECT_EQ(refusalOf({"unit", "delete", "Ovrin:0F000009"}),
              "arrayctl: There is no logical unit \"Ovrin:0F000009\".\n");
    EXPECT_THAT(refusalOf({"unit", "delete", "iqn.2026-01.com.example:t1", "one"}),
                HasSubstr("\"one\" is not a decimal number"));
    EXPECT_EQ(refusalOf({"unit", "delete", "iqn.2026-01.com.example:t1"}),
              "arrayctl: There is no logical unit \"iqn.2026-01.com.example:t1\".\n");
}

TEST_F(UnitCommands, AUnitWhoseVolumeIsGoneKeepsItsName) {
    importSmallArray();
    outputOf({"volume", "delete", "mail"});
    EXPECT_THAT(outputOf({"unit", "list"}), HasSubstr("60014051A2B3C4D5E6F7A8B9C0D1E2F3"));
    EXPECT_THAT(outputOf({"unit", "list"}), HasSubstr("volume is gone"));
    EXPECT_TRUE(jsonOf({"unit", "list"})[0]["size"].is_null());
}

} // namespace
