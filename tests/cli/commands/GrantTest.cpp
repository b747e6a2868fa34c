#include "tests/cli/Cli.h"

namespace {

using GrantCommands = Cli;

TEST_F(GrantCommands, ListShowsEachPair) {
    importSmallArray();
    EXPECT_EQ(outputOf({"grant", "list"}),
              "TARGET                      INITIATOR\n"
              "iqn.2026-01.com.example:t1  iqn.2026-01.com.example:host1\n"
              "iqn.2026-01.com.example:t1  iqn.2026-01.com.example:host2\n");
}

TEST_F(GrantCommands, CreateAndDeleteMayBeRepeated) {
    importSmallArray();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(outputOf({"grant", "create", "iqn.2026-01.com.example:t2", "Ovrin:0D000003"}),
                  "");
    }
    EXPECT_EQ(jsonOf({"grant", "list"}).size(), 3U);
    for (int i = 0; i < 2; ++i) {
        outputOf({"grant", "delete", "Ovrin:0E000002", "eui.02004567a425678d"});
    }
    EXPECT_EQ(jsonOf({"grant", "list"}).size(), 2U);
}

TEST_F(GrantCommands, AnUnknownTargetOrInitiatorIsRefused) {
    importSmallArray();
    EXPECT_EQ(refusalOf({"grant", "create", "iqn.2026-01.com.example:t9", "Ovrin:0D000003"}),
              "arrayctl: There is no target \"iqn.2026-01.com.example:t9\".\n");
    EXPECT_EQ(refusalOf({"grant", "create", "iqn.2026-01.com.example:t1", "Ovrin:0E000001"}),
              "arrayctl: There is no initiator \"Ovrin:0E000001\".\n");
}

} // namespace
