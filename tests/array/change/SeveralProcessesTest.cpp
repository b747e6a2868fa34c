#include <fstream>

#include <SQLiteCpp/Database.h>

#include "array/database/StateDirectory.h"
#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_ISCSI_SESSION;
using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_TARGET;
using Pegasus::CLASSID_VOLUME;

// Two arrays on one state directory know no more of each other than two processes do.
class SeveralProcessesTest : public ArrayFixture {
protected:
    Array& other() { return *_other; }
    SnapshotPtr seen() { return _other->snapshot(); }

    std::unique_ptr<Array> _other = Array::open(state());
};

TEST_F(SeveralProcessesTest, EachSeesTheOthersChangesAtOnce) {
    change([](Change& change) { change.setNames({"array2.example.com", "array2"}); });
    EXPECT_EQ(seen()->names().host, "array2.example.com");
    const Id target = addTarget();
    EXPECT_NE(seen()->target(target), nullptr);
    EXPECT_EQ(seen()->targetByName("iqn.2026-01.com.example:t1"), target);
    EXPECT_NE(seen()->sessionSettings(seen()->sessionSettingsOf(target)), nullptr);
    const Id initiator = addInitiator();
    change([&](Change& change) { change.grant(target, initiator); });
    EXPECT_TRUE(seen()->granted(target, initiator));
    const Id volume = addVolume();
    const Id unit = addUnit(target, 3, volume);
    EXPECT_EQ(seen()->unitByLun(target, 3), unit);
    const Id endpoint = addEndpoint();

    const Id session = other().login({target, initiator, {}, {endpoint}});
    EXPECT_EQ(now()->associated(target, CLASSID_ISCSI_SESSION), std::vector<Id>{session});
    EXPECT_EQ(now()->loginStatistics(target).successfulLogins, 1u);
    EXPECT_GT(now()->interfaceStatistics(endpoint).framesSent, 0u);
    EXPECT_GT(now()->sessionStatistics(session).commandPDUs, 0u);

    other().change([&](Change& change) { change.remove(volume); });
    EXPECT_EQ(now()->volume(volume), nullptr);
    EXPECT_EQ(now()->volumeNameOf(unit), "60014051A2B3C4D5");
    change([&](Change& change) { change.revoke(target, initiator); });
    EXPECT_FALSE(seen()->granted(target, initiator));
    EXPECT_EQ(seen()->count(CLASSID_ISCSI_SESSION), 0u);
    EXPECT_EQ(seen()->loginStatistics(target).otherLogouts, 1u);
    change([&](Change& change) {
        change.remove(unit);
        change.remove(target);
    });
    EXPECT_EQ(seen()->target(target), nullptr);
    EXPECT_EQ(seen()->targetByName("iqn.2026-01.com.example:t1"), 0u);
    EXPECT_EQ(seen()->loginStatistics(target).successfulLogins, 0u);
    EXPECT_EQ(seen()->version(), now()->version());
}

TEST_F(SeveralProcessesTest, AChangeIsJudgedByWhatTheOthersDid) {
    addTarget();
    EXPECT_EQ(failureOf([&] {
                  other().change([](Change& change) {
                      change.create(Target{"iqn.2026-01.com.example:t1", {}});
                  });
              }).code,
              ErrorCode::NameTaken);
}

TEST_F(SeveralProcessesTest, AnIdIsGivenOnceAmongAll) {
    const Id first = addTarget();
    change([&](Change& change) { change.remove(first); });
    Id second = 0;
    other().change([&](Change& change) {
        second = change.create(Target{"iqn.2026-01.com.example:t1", {}});
    });
    EXPECT_EQ(second, first + 1);
    EXPECT_EQ(addTarget("t3"), second + 1);
}

TEST_F(SeveralProcessesTest, NamesAndNumbersMayChangePlaces) {
    const Id target = addTarget();
    const Id volume = addVolume();
    const Id one = addUnit(target, 1, volume);
    const Id two = addUnit(target, 2, volume);
    const Id second = addTarget("t2");
    change([&](Change& change) {
        change.modify(one, LogicalUnit{target, 9, 0, volume, {}});
        change.modify(two, LogicalUnit{target, 1, 0, volume, {}});
        change.modify(one, LogicalUnit{target, 2, 0, volume, {}});
        change.modify(target, Target{"iqn.2026-01.com.example:t9", {}});
        change.modify(second, Target{"iqn.2026-01.com.example:t1", {}});
        change.modify(target, Target{"iqn.2026-01.com.example:t2", {}});
    });
    EXPECT_EQ(seen()->unitByLun(target, 1), two);
    EXPECT_EQ(seen()->unitByLun(target, 2), one);
    EXPECT_EQ(seen()->unitByLun(target, 9), 0u);
    EXPECT_EQ(seen()->targetByName("iqn.2026-01.com.example:t1"), second);
    EXPECT_EQ(seen()->targetByName("iqn.2026-01.com.example:t2"), target);
    EXPECT_EQ(seen()->targetByName("iqn.2026-01.com.example:t9"), 0u);
}

TEST_F(SeveralProcessesTest, AChangeTooLargeForTheLogIsSeenWhole) {
    addTarget();
    change([](Change& change) {
        for (int i = 0; i < 6000; ++i) {
            change.create(Volume{std::to_string(1000000000 + i), {}, 0, 0});
        }
    });
    EXPECT_EQ(seen()->count(CLASSID_VOLUME), 6000u);
    EXPECT_EQ(seen()->count(CLASSID_TARGET), 1u);
    EXPECT_EQ(seen()->volumeByName("1000005999"), 0x17000000u + 6000);
}

TEST_F(SeveralProcessesTest, WhoLooksAfterALongTimeSeesEverything) {
    const std::uint64_t before = seen()->version();
    for (int i = 0; i < 1500; ++i) {
        const Id id = addInitiator("host" + std::to_string(i));
        if (i % 3 == 0) {
            change([&](Change& change) { change.remove(id); });
        }
    }
    EXPECT_EQ(seen()->version(), before + 2000);
    EXPECT_EQ(seen()->ids(CLASSID_INITIATOR), now()->ids(CLASSID_INITIATOR));
    EXPECT_EQ(seen()->count(CLASSID_INITIATOR), 1000u);
    SQLite::Database database(databaseIn(state()).string());
    EXPECT_LE(database.execAndGet("SELECT count(*) FROM log").getInt(), 1024 + 256);
}

TEST_F(SeveralProcessesTest, ReadersAreAnsweredWhileAnotherProcessHasTheTurn) {
    addTarget();
    SQLite::Database writer(databaseIn(state()).string(), SQLite::OPEN_READWRITE);
    writer.exec("BEGIN IMMEDIATE; UPDATE array SET host = 'uncommitted'");
    EXPECT_EQ(seen()->count(CLASSID_TARGET), 1u);
    EXPECT_NE(seen()->names().host, "uncommitted");
    writer.exec("ROLLBACK");
}

// SQLite checkpoints its log now and then, and begins it anew.
TEST_F(SeveralProcessesTest, NothingIsMissedWhenTheLogBeginsAnew) {
    for (int i = 0; i < 20; ++i) {
        addTarget("t" + std::to_string(i));
        EXPECT_EQ(seen()->count(CLASSID_TARGET), static_cast<std::size_t>(i) + 1);
        SQLite::Database(databaseIn(state()).string(), SQLite::OPEN_READWRITE)
            .exec(i % 2 == 0 ? "PRAGMA wal_checkpoint(TRUNCATE)" : "PRAGMA wal_checkpoint");
        EXPECT_EQ(seen()->count(CLASSID_TARGET), static_cast<std::size_t>(i) + 1);
        EXPECT_EQ(now()->count(CLASSID_TARGET), static_cast<std::size_t>(i) + 1);
    }
}

TEST_F(SeveralProcessesTest, ABackupIsAnArrayToo) {
    const Id target = addTarget();
    const fs::path file = _directory.path() / "backup.db";
    other().backup(file);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    expectFailure(ErrorCode::StateExists, file.string() + ": File exists.",
                  [&] { other().backup(file); });
    addTarget("t2"); // not in it

    const fs::path restored = _directory.path() / "restored";
    fs::create_directory(restored);
    fs::permissions(restored, fs::perms::owner_all);
    fs::copy(file, databaseIn(restored));
    const auto copy = Array::open(restored);
    EXPECT_EQ(copy->snapshot()->ids(CLASSID_TARGET), std::vector<Id>{target});
    EXPECT_TRUE(copy->check().empty());
}

} // namespace
} // namespace array
