#include "tests/cli/Cli.h"

namespace {

using ShowCommand = Cli;

TEST_F(ShowCommand, DrawsHostsTheirTargetsAndVolumes) {
    importSmallArray();
    outputOf({"session", "login", "iqn.2026-01.com.example:host1", "iqn.2026-01.com.example:t1"});
    EXPECT_EQ(outputOf({"show"}),
              R"(Array array1 on array1.example.com

Endpoints
├─ 192.0.2.10:3260
└─ [2001:db8::1]:860

Hosts
├─ iqn.2026-01.com.example:host1  secret not set
│  └─ iqn.2026-01.com.example:t1  secret set  1 session through 192.0.2.10:3260
│     └─ LUN 1  rw  1 GiB  60014051A2B3C4D5E6F7A8B9C0D1E2F3  mail
├─ iqn.2026-01.com.example:host2  secret set
│  └─ iqn.2026-01.com.example:t1  secret set  not logged in
│     └─ LUN 1  rw  1 GiB  60014051A2B3C4D5E6F7A8B9C0D1E2F3  mail
└─ eui.02004567a425678d           secret not set
   └─ no targets

Targets that no host may reach
└─ iqn.2026-01.com.example:t2  secret not set
   └─ no logical units

Volumes under no target
├─ 1.5 GiB  60014051A2B3C4D5E6F7A8B9C0D1E2F4  spare
└─ 512 B    60014051A2B3C4D5E6F7A8B9C0D1E2F5  spare
)");
}

TEST_F(ShowCommand, DrawsAnEmptyArray) {
    import(R"({ "host": "h", "system": "s" })");
    EXPECT_EQ(outputOf({"show"}), "Array s on h\n");
}

TEST_F(ShowCommand, GivesProgramsTheSameMap) {
    importSmallArray();
    outputOf({"session", "login", "iqn.2026-01.com.example:host1", "iqn.2026-01.com.example:t1"});
    const auto map = jsonOf({"show"});
    EXPECT_EQ(map["system"], "array1");
    EXPECT_EQ(map["host"], "array1.example.com");
    EXPECT_EQ(map["endpoints"].size(), 2U);
    EXPECT_EQ(map["hosts"].size(), 3U);
    const auto& reached = map["hosts"][0]["targets"][0];
    EXPECT_EQ(reached["key"], "Ovrin:0E000001");
    EXPECT_EQ(reached["secretSet"], true);
    EXPECT_EQ(reached["units"][0]["size"], 1073741824);
    EXPECT_EQ(reached["sessions"][0]["key"], "Ovrin:11000001");
    EXPECT_EQ(map["targetsWithoutHosts"][0]["key"], "Ovrin:0E000002");
    EXPECT_EQ(map["volumesWithoutUnits"].size(), 2U);
    EXPECT_EQ(map.dump().find("-secret-"), std::string::npos);
}

} // namespace
