#include "tests/cli/Cli.h"

using testing::HasSubstr;

namespace {

using VolumeCommands = Cli;

TEST_F(VolumeCommands, ListShowsATableWithSizesForPeople) {
    importSmallArray();
    EXPECT_EQ(outputOf({"volume", "list"}),
              "KEY             NAME                              ELEMENT NAME  SIZE     UNITS\n"
              "Ovrin:17000001  60014051A2B3C4D5E6F7A8B9C0D1E2F3  mail          1 GiB    1\n"
              "Ovrin:17000002  60014051A2B3C4D5E6F7A8B9C0D1E2F4  spare         1.5 GiB  0\n"
              "Ovrin:17000003  60014051A2B3C4D5E6F7A8B9C0D1E2F5  spare         512 B    0\n");
}

TEST_F(VolumeCommands, ListGivesProgramsTheSizeInBytes) {
    importSmallArray();
    const auto list = jsonOf({"volume", "list"});
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1].dump(),
              R"({"key":"Ovrin:17000002","name":"60014051A2B3C4D5E6F7A8B9C0D1E2F4",)"
              R"("elementName":"spare","size":1610612736,"units":0})");
}

TEST_F(VolumeCommands, ListOfNoneSaysSo) {
    import(R"({ "host": "h", "system": "s" })");
    EXPECT_EQ(outputOf({"volume", "list"}), "none\n");
    EXPECT_EQ(jsonOf({"volume", "list"}), nlohmann::ordered_json::array());
}

TEST_F(VolumeCommands, CreateTakesSizesWithUnitsAndWritesTheKey) {
    importSmallArray();
    EXPECT_EQ(outputOf({"volume", "create", "60014051A2B3C4D5E6F7A8B9C0D1E2F6", "--size", "10GiB",
                        "--element-name", "archive"}),
              "Ovrin:17000004\n");
    EXPECT_EQ(jsonOf({"volume", "create", "60014051A2B3C4D5E6F7A8B9C0D1E2F7", "--size", "512"}),
              (nlohmann::ordered_json{{"key", "Ovrin:17000005"}}));
    const auto list = jsonOf({"volume", "list"});
    EXPECT_EQ(list[3]["size"], 10737418240U);
    EXPECT_EQ(list[3]["elementName"], "archive");
    EXPECT_EQ(list[4]["size"], 512U);
}

TEST_F(VolumeCommands, CreateWithABadSizeIsWrongUsage) {
    importSmallArray();
    for (const char* size : {"10XiB", "-1", "1.5GiB", "", "99999999999GiB"}) {
        EXPECT_EQ(
            run({"volume", "create", "60014051A2B3C4D5E6F7A8B9C0D1E2F6", "--size", size}).status,
            cli::WrongUsage)
            << size;
    }
    EXPECT_EQ(jsonOf({"volume", "list"}).size(), 3U);
}

TEST_F(VolumeCommands, CreateOfATakenNameIsRefusedByTheArray) {
    importSmallArray();
    EXPECT_THAT(
        refusalOf({"volume", "create", "60014051a2b3c4d5e6f7a8b9c0d1e2f3", "--size", "1GiB"}),
        HasSubstr("60014051a2b3c4d5e6f7a8b9c0d1e2f3"));
    EXPECT_EQ(jsonOf({"volume", "list"}).size(), 3U);
}

TEST_F(VolumeCommands, DeleteTakesTheNameTheElementNameOrTheKey) {
    importSmallArray();
    outputOf({"volume", "delete", "mail"});
    outputOf({"volume", "delete", "Ovrin:17000002"});
    EXPECT_EQ(jsonOf({"volume", "list"}).size(), 1U);
    outputOf({"volume", "delete", "60014051a2b3c4d5e6f7a8b9c0d1e2f5"});
    EXPECT_EQ(jsonOf({"volume", "list"}).size(), 0U);
}

TEST_F(VolumeCommands, DeleteOfAnElementNameThatTwoHaveIsRefused) {
    importSmallArray();
    EXPECT_EQ(refusalOf({"volume", "delete", "spare"}),
              "arrayctl: More than one volume has the element name \"spare\"; use the volume's "
              "name.\n");
    EXPECT_EQ(jsonOf({"volume", "list"}).size(), 3U);
}

TEST_F(VolumeCommands, DeleteOfWhatIsNotThereIsRefused) {
    importSmallArray();
    EXPECT_EQ(refusalOf({"volume", "delete", "6001"}), "arrayctl: There is no volume \"6001\".\n");
    EXPECT_EQ(refusalOf({"volume", "delete", "Ovrin:17000009"}),
              "arrayctl: There is no volume \"Ovrin:17000009\".\n");
    EXPECT_EQ(refusalOf({"volume", "delete", "Ovrin:0E000001"}),
              "arrayctl: There is no volume \"Ovrin:0E000001\".\n");
    EXPECT_EQ(refusalOf({"volume", "delete", ""}), "arrayctl: There is no volume \"\".\n");
    EXPECT_EQ(refusalOf({"volume", "delete", "Ovrin:xyz"}),
              "arrayctl: There is no volume \"Ovrin:xyz\".\n");
}

TEST_F(VolumeCommands, NamesThatAreNoUtf8AreRefused) {
    importSmallArray();
    EXPECT_THAT(refusalOf({"volume", "delete", "Ovrin:\xff"}), testing::StartsWith("arrayctl: "));
    EXPECT_THAT(refusalOf({"volume", "create", "6002", "--size", "1", "--element-name", "\xff"}),
                testing::StartsWith("arrayctl: "));
}

} // namespace
