#include "tests/cli/Cli.h"

namespace {

using InitiatorCommands = Cli;

TEST_F(InitiatorCommands, ListTellsWhetherASecretIsSet) {
    importSmallArray();
    EXPECT_EQ(outputOf({"initiator", "list"}),
              "KEY             NAME                           SECRET   GRANTS  SESSIONS\n"
              "Ovrin:0D000001  iqn.2026-01.com.example:host1  not set  1       0\n"
              "Ovrin:0D000002  iqn.2026-01.com.example:host2  set      1       0\n"
              "Ovrin:0D000003  eui.02004567a425678d           not set  0       0\n");
}

TEST_F(InitiatorCommands, CreateWritesTheKey) {
    importSmallArray();
    EXPECT_EQ(outputOf({"initiator", "create", "naa.52004567BA64678D"}), "Ovrin:0D000004\n");
}

TEST_F(InitiatorCommands, DeleteRemovesItsGrantsToo) {
    importSmallArray();
    outputOf({"initiator", "delete", "IQN.2026-01.com.example:HOST1"});
    EXPECT_EQ(jsonOf({"initiator", "list"}).size(), 2U);
    EXPECT_EQ(jsonOf({"grant", "list"}).size(), 1U);
    EXPECT_EQ(refusalOf({"initiator", "delete", "iqn.2026-01.com.example:host1"}),
              "arrayctl: There is no initiator \"iqn.2026-01.com.example:host1\".\n");
}

} // namespace
