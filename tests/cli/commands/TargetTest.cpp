#include "tests/cli/Cli.h"

using testing::HasSubstr;
using testing::Not;

namespace {

using TargetCommands = Cli;

TEST_F(TargetCommands, ListTellsWhetherASecretIsSetAndNeverWhichOne) {
    importSmallArray();
    EXPECT_EQ(outputOf({"target", "list"}),
              "KEY             NAME                        SECRET   UNITS  GRANTS  SESSIONS\n"
              "Ovrin:0E000001  iqn.2026-01.com.example:t1  set      1      2       0\n"
              "Ovrin:0E000002  iqn.2026-01.com.example:t2  not set  0      0       0\n");
    EXPECT_EQ(jsonOf({"target", "list"})[0].dump(),
              R"({"key":"Ovrin:0E000001","name":"iqn.2026-01.com.example:t1","secretSet":true,)"
              R"("units":1,"grants":2,"sessions":0})");
}

TEST_F(TargetCommands, CreateWritesTheKeyAndDeleteRemovesIt) {
    importSmallArray();
    EXPECT_EQ(outputOf({"target", "create", "iqn.2026-01.com.example:t3"}), "Ovrin:0E000003\n");
    EXPECT_EQ(outputOf({"target", "delete", "iqn.2026-01.com.example:t3"}), "");
    EXPECT_EQ(jsonOf({"target", "list"}).size(), 2U);
}

TEST_F(TargetCommands, CreateWithABadNameIsRefusedByTheArray) {
    importSmallArray();
    EXPECT_THAT(refusalOf({"target", "create", "t3"}), HasSubstr("\"t3\""));
    EXPECT_EQ(jsonOf({"target", "list"}).size(), 2U);
}

TEST_F(TargetCommands, DeleteOfATargetWithUnitsIsRefused) {
    importSmallArray();
    EXPECT_THAT(refusalOf({"target", "delete", "iqn.2026-01.com.example:t1"}),
                HasSubstr("arrayctl: "));
    EXPECT_EQ(jsonOf({"target", "list"}).size(), 2U);
}

TEST_F(TargetCommands, ShowGivesTheKeysOfSettingsAndStatistics) {
    importSmallArray();
    outputOf({"session", "login", "iqn.2026-01.com.example:host1", "Ovrin:0E000001"});
    const auto report = jsonOf({"target", "show", "iqn.2026-01.com.example:t1"});
    EXPECT_EQ(report["target"].dump(),
              R"({"key":"Ovrin:0E000001","name":"iqn.2026-01.com.example:t1","secretSet":true})");
    EXPECT_EQ(report["logicalUnits"][0]["lun"], 1);
    EXPECT_EQ(report["initiators"].size(), 2U);
    EXPECT_EQ(report["sessions"][0]["key"], "Ovrin:11000001");
    EXPECT_EQ(report["sessionSettings"]["key"], "Ovrin:23000001");
    EXPECT_EQ(report["sessionSettings"]["firstBurstLength"], 65536);
    EXPECT_EQ(report["connectionSettings"]["key"], "Ovrin:22000001");
    EXPECT_EQ(report["connectionSettings"]["primaryHeaderDigest"], "CRC32C");
    EXPECT_EQ(report["connectionSettings"]["primaryDataDigest"], "CRC32C");
    EXPECT_EQ(report["connectionSettings"]["secondaryHeaderDigest"], "None");
    EXPECT_EQ(report["connectionSettings"]["secondaryDataDigest"], "None");
    EXPECT_EQ(report["connectionSettings"]["primaryAuthMethod"], "CHAP");
    EXPECT_EQ(report["connectionSettings"]["secondaryAuthMethod"], "NoAuthentication");
    EXPECT_EQ(report["loginStatistics"]["key"], "Ovrin:0E000001");
    EXPECT_EQ(report["loginStatistics"]["successfulLogins"], 1);
    EXPECT_EQ(report["sessionFailures"]["key"], "Ovrin:0E000001");
    EXPECT_EQ(report["sessionStatistics"][0]["key"], "Ovrin:11000001");
    EXPECT_EQ(report["endpointStatistics"].size(), 2U);
    EXPECT_EQ(report["endpointStatistics"][0]["key"], "Ovrin:09000001");
    EXPECT_EQ(report["endpointStatistics"][0]["endpoint"], "192.0.2.10:3260");
    EXPECT_GT(report["endpointStatistics"][0]["framesReceived"], 0);
}

TEST_F(TargetCommands, ShowHasATitleForEachPart) {
    importSmallArray();
    const std::string report = outputOf({"target", "show", "iqn.2026-01.com.example:t1"});
    EXPECT_THAT(report, HasSubstr("Target\n"
                                  "  key        Ovrin:0E000001\n"
                                  "  name       iqn.2026-01.com.example:t1\n"
                                  "  secretSet  yes\n"
                                  "\n"
                                  "Logical units\n"
                                  "  KEY "));
    EXPECT_THAT(report, HasSubstr("\n\nSessions\n  none\n"));
    EXPECT_THAT(report, HasSubstr("(CIM_iSCSISessionSettings)\n  key                  "
                                  "Ovrin:23000001\n"));
    EXPECT_THAT(report, Not(HasSubstr("target-secret")));
}

TEST_F(TargetCommands, ShowOfWhatIsNotThereIsRefused) {
    importSmallArray();
    EXPECT_EQ(refusalOf({"target", "show", "iqn.2026-01.com.example:t9"}),
              "arrayctl: There is no target \"iqn.2026-01.com.example:t9\".\n");
}

} // namespace
