#include "array/database/Check.h"

#include <thread>

#include <SQLiteCpp/Database.h>

#include "array/database/StateDirectory.h"
#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

struct Damage {
    const char* name;
    const char* sql;
    const char* finding;
};

class CheckTest : public ArrayFixture, public testing::WithParamInterface<Damage> {};

TEST_P(CheckTest, FindsWhatIsWrong) {
    const Id target = addTarget();
    const Id second = addTarget("t2");
    const Id initiator = addInitiator();
    const Id volume = addVolume();
    addUnit(target, 0, volume);
    addUnit(target, 1, volume);
    change([&](Change& change) { change.grant(second, initiator); });
    array().login({second, initiator, {}, {addEndpoint()}});
    ASSERT_TRUE(array().check().empty());

    SQLite::Database(databaseIn(state()).string(), SQLite::OPEN_READWRITE).exec(GetParam().sql);
    EXPECT_EQ(array().check(), std::vector<std::string>{GetParam().finding});
}

INSTANTIATE_TEST_SUITE_P(
    Damage, CheckTest,
    testing::Values(
        Damage{"Dangling", "UPDATE unit SET volume = 0x17000099 WHERE lun = 1",
               "array.db: row 251658242 of table unit names a volume that is not there"},
        Damage{"NameInAnotherForm",
               "UPDATE target SET name = 'iqn.2026-01.com.example:T9' WHERE name LIKE '%t1'",
               "Ovrin:0E000001: \"iqn.2026-01.com.example:T9\" is no iSCSI name: names are kept in "
               "lower case and normalized (RFC 3722)."},
        Damage{"DoubleName",
               "UPDATE target SET name = 'iqn.2026-01.com.example:t1' WHERE id = "
               "0x0E000002",
               "Ovrin:0E000002: Ovrin:0E000001 has the same name"},
        Damage{"BadName", "UPDATE initiator SET name = 'host1'",
               "Ovrin:0D000001: \"host1\" is no iSCSI name: it begins with \"iqn.\", \"eui.\" or "
               "\"naa.\" (RFC 7143 section 4.2.7.3)."},
        Damage{"DoubleLun", "DROP INDEX unit_lun; UPDATE unit SET lun = 0",
               "Ovrin:0F000001: another logical unit of Ovrin:0E000001 has LUN 0 too"},
        Damage{"LargeLun", "UPDATE unit SET lun = 20000 WHERE lun = 1",
               "Ovrin:0F000002: LUN 20000 is out of range"},
        Damage{"NoSettings", "DELETE FROM session_settings WHERE id = 0x23000001",
               "Ovrin:0E000001: its settings are missing"},
        Damage{"NoTarget",
               "INSERT INTO session_settings SELECT 0x23000009, max_connections, "
               "initial_r2t, immediate_data, max_outstanding_r2t, first_burst_length, "
               "max_burst_length, data_sequence_in_order, data_pdu_in_order, "
               "default_time2wait, default_time2retain, error_recovery_level FROM "
               "session_settings WHERE id = 0x23000001",
               "Ovrin:23000009: its target is missing"},
        Damage{"NoGrant", "DELETE FROM access_grant",
               "Ovrin:11000001: Ovrin:0D000001 has no grant for Ovrin:0E000002"},
        Damage{"Bursts",
               "UPDATE session_settings SET first_burst_length = 524288 WHERE id = "
               "0x23000001",
               "Ovrin:23000001: FirstBurstLength 524288 of it is longer than its MaxBurstLength "
               "262144 (RFC 7143 section 13.14)."}),
    [](const auto& damage) { return damage.param.name; });

class LogGrowthTest : public ArrayFixture {};

TEST_F(LogGrowthTest, IsBoundedByEndingTheLookForDamage) {
    change([](Change& change) {
        for (int i = 0; i < 20000; ++i) {
            change.create(Volume{std::to_string(1000000000 + i), std::string(200, 'n'), 0, 0});
        }
    });
    std::jthread writer([this](const std::stop_token& stopping) {
        const auto other = Array::open(state());
        while (!stopping.stop_requested()) {
            other->change([](Change& change) {
                for (int i = 0; i < 100; ++i) {
                    change.remove(change.create(Volume{"FF" + std::to_string(1000 + i), {}, 0, 0}));
                }
            });
        }
    });
    Failure failure;
    for (int attempts = 0; attempts < 1000 && failure.code == ErrorCode{}; ++attempts) {
        failure = failureOf([&] { findDamage(databaseIn(state()), 0); });
    }
    EXPECT_EQ(failure.code, ErrorCode::StateBusy);
    EXPECT_NE(failure.message.find("array.db-wal has grown by over 0 bytes"), std::string::npos)
        << failure.message;
    EXPECT_TRUE(findDamage(databaseIn(state())).empty());
}

} // namespace
} // namespace array
