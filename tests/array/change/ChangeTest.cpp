#include "array/change/Change.h"

#include <SQLiteCpp/Database.h>

#include "array/database/StateDirectory.h"
#include "array/model/Ids.h"
#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_ISCSI_CONNECTION;
using Pegasus::CLASSID_ISCSI_SESSION;
using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_TARGET;
using Pegasus::CLASSID_VOLUME;

using Ids = std::vector<Id>;

class ChangeTest : public ArrayFixture {
protected:
    // Expects a change to be refused, and to have left no trace.
    void expectRefused(ErrorCode code, const std::string& message,
                       const std::function<void(Change&)>& make) {
        const std::uint64_t version = now()->version();
        expectFailure(code, message, [&] { change(make); });
        EXPECT_EQ(now()->version(), version);
        EXPECT_TRUE(array().check().empty());
    }
};

TEST_F(ChangeTest, NamesAreUniqueInTheirClassWhateverTheCase) {
    addTarget();
    addInitiator("t1"); // another class may have the same name
    addVolume("ABCDEF");
    addEndpoint("2001:db8::1");
    expectRefused(ErrorCode::NameTaken,
                  "\"iqn.2026-01.com.example:t1\" is the name of another target, Ovrin:0E000001, "
                  "and each has its own.",
                  [](Change& change) {
                      change.create(Target{"iqn.2026-01.COM.EXAMPLE:T1", {}});
                  });
    expectRefused(ErrorCode::NameTaken,
                  "\"iqn.2026-01.com.example:t1\" is the name of another initiator, "
                  "Ovrin:0D000001, and each has its own.",
                  [](Change& change) {
                      change.create(Initiator{"iqn.2026-01.com.example:t1", {}});
                  });
    expectRefused(ErrorCode::NameTaken,
                  "\"abcdef\" is the name of another volume, Ovrin:17000001, and each has its own.",
                  [](Change& change) {
                      change.create(Volume{"abcdef", {}, 0, 0});
                  });
    expectRefused(ErrorCode::NameTaken,
                  "\"2001:DB8::1 3260\" is the name of another endpoint, Ovrin:09000001, and each "
                  "has its own.",
                  [](Change& change) {
                      change.create(Endpoint{"2001:DB8::1", 3260});
                  });
    EXPECT_NO_THROW(create(Endpoint{"2001:DB8::1", 3261}));
}

TEST_F(ChangeTest, AnObjectMayKeepItsNameWhenItIsModified) {
    const Id target = addTarget();
    const Id other = addTarget("t2");
    change([&](Change& change) {
        change.modify(target, Target{"iqn.2026-01.com.example:T1", "longer than twelve"});
    });
    EXPECT_EQ(now()->target(target)->secret, "longer than twelve");
    expectRefused(ErrorCode::NameTaken,
                  "\"iqn.2026-01.com.example:t1\" is the name of another target, Ovrin:0E000001, "
                  "and each has its own.",
                  [&](Change& change) {
                      change.modify(other, Target{"iqn.2026-01.com.example:t1", {}});
                  });
}

TEST_F(ChangeTest, ANameIsFreeAgainWhenItsObjectIsGone) {
    const Id initiator = addInitiator();
    change([&](Change& change) {
        change.remove(initiator);
        change.create(Initiator{"iqn.2026-01.com.example:host1", {}});
    });
    EXPECT_EQ(now()->initiatorByName("iqn.2026-01.com.example:host1"), initiator + 1);
}

TEST_F(ChangeTest, ALunIsBelow16384AndUniqueInItsTarget) {
    const Id target = addTarget();
    const Id other = addTarget("t2");
    const Id volume = addVolume();
    const Id unit = addUnit(target, 16383, volume);
    EXPECT_NO_THROW(addUnit(other, 16383, volume));
    expectRefused(ErrorCode::BadLun,
                  "LUN 16384 of target \"iqn.2026-01.com.example:t1\" is out of range: it must be "
                  "below 16384.",
                  [&](Change& change) {
                      change.create(LogicalUnit{target, 16384, 0, volume, {}});
                  });
    expectRefused(ErrorCode::LunTaken,
                  "LUN 16383 of target \"iqn.2026-01.com.example:t1\" is taken by logical unit " +
                      keyText(unit) + ".",
                  [&](Change& change) {
                      change.create(LogicalUnit{target, 16383, 0, volume, {}});
                  });
    change([&](Change& change) { change.remove(unit); });
    EXPECT_NO_THROW(addUnit(target, 16383, volume));
}

TEST_F(ChangeTest, AVolumeMayHaveSeveralUnitsUnderOneTarget) {
    const Id target = addTarget();
    const Id volume = addVolume();
    const Ids units = {addUnit(target, 1, volume), addUnit(target, 2, volume)};
    EXPECT_EQ(now()->associated(volume, CLASSID_LOGICAL_UNIT), units);
    EXPECT_EQ(now()->associated(target, CLASSID_LOGICAL_UNIT), units);
}

TEST_F(ChangeTest, AUnitNeedsItsTargetAndItsVolume) {
    const Id target = addTarget();
    const Id volume = addVolume();
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:0E000009 names no object of the class target.",
                  [&](Change& change) {
                      change.create(LogicalUnit{0x0E000009, 0, 0, volume, {}});
                  });
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:00000000 names no object of the class volume.",
                  [&](Change& change) {
                      change.create(LogicalUnit{target, 0, 0, 0, {}});
                  });
    expectRefused(ErrorCode::WrongClass,
                  "Ovrin:0E000001 is of the class target, and the class volume was asked for.",
                  [&](Change& change) {
                      change.create(LogicalUnit{target, 0, 0, target, {}});
                  });
}

TEST_F(ChangeTest, AUnitChangesItsNumberAndAccessButNotItsEnds) {
    const Id target = addTarget();
    const Id volume = addVolume();
    const Id first = addUnit(target, 1, volume);
    const Id second = addUnit(target, 2, volume);
    change([&](Change& change) { change.modify(first, LogicalUnit{target, 3, 77, volume, "x"}); });
    EXPECT_EQ(now()->logicalUnit(first)->access, 77u);
    EXPECT_EQ(now()->unitByLun(target, 3), first);
    EXPECT_EQ(now()->unitByLun(target, 1), 0u);
    EXPECT_EQ(now()->volumeNameOf(first), "60014051A2B3C4D5");
    expectRefused(ErrorCode::LunTaken,
                  "LUN 2 of target \"iqn.2026-01.com.example:t1\" is taken by logical unit " +
                      keyText(second) + ".",
                  [&](Change& change) {
                      change.modify(first, LogicalUnit{target, 2, 0, volume, {}});
                  });
    expectRefused(ErrorCode::FixedValue,
                  "The target and the volume of logical unit Ovrin:0F000001 cannot be changed. "
                  "Remove it and make another one.",
                  [&](Change& change) {
                      change.modify(first, LogicalUnit{target, 3, 0, 0, {}});
                  });
}

TEST_F(ChangeTest, AVolumeLeavesItsUnitsBehindWithItsName) {
    const Id target = addTarget();
    const Id volume = addVolume();
    const Id unit = addUnit(target, 5, volume);
    change([&](Change& change) { change.remove(volume); });
    for (int round = 0; round < 2; ++round, reopen()) {
        EXPECT_EQ(now()->volume(volume), nullptr);
        ASSERT_NE(now()->logicalUnit(unit), nullptr);
        EXPECT_EQ(now()->logicalUnit(unit)->volume, 0u);
        EXPECT_EQ(now()->volumeNameOf(unit), "60014051A2B3C4D5");
        EXPECT_EQ(now()->unitByLun(target, 5), unit);
        EXPECT_TRUE(now()->associated(volume, CLASSID_LOGICAL_UNIT).empty());
    }
    // A zombie can still change its access, and be removed.
    change([&](Change& change) { change.modify(unit, LogicalUnit{target, 5, 1, 0, {}}); });
    EXPECT_EQ(now()->volumeNameOf(unit), "60014051A2B3C4D5");
    change([&](Change& change) { change.remove(unit); });
    EXPECT_EQ(now()->count(CLASSID_LOGICAL_UNIT), 0u);
}

TEST_F(ChangeTest, AnInitiatorTakesItsGrantsAndSessionsWithIt) {
    const Id first = addTarget();
    const Id second = addTarget("t2");
    const Id initiator = addInitiator();
    const Id other = addInitiator("host2");
    const Id endpoint = addEndpoint();
    change([&](Change& change) {
        for (const Id target : {first, second}) {
            for (const Id host : {initiator, other}) {
                change.grant(target, host);
            }
        }
    });
    array().login({first, initiator, {}, {endpoint}});
    const Id kept = array().login({second, other, {}, {endpoint}});
    change([&](Change& change) { change.remove(initiator); });
    EXPECT_EQ(now()->associated(first, CLASSID_INITIATOR), Ids{other});
    EXPECT_EQ(now()->associated(second, CLASSID_INITIATOR), Ids{other});
    EXPECT_EQ(now()->ids(CLASSID_ISCSI_SESSION), Ids{kept});
    EXPECT_TRUE(array().check().empty());
}

TEST_F(ChangeTest, ATargetInUseCannotBeRemoved) {
    const Id target = addTarget();
    const Id initiator = addInitiator();
    const Id endpoint = addEndpoint();
    const Id unit = addUnit(target, 0, addVolume());
    change([&](Change& change) { change.grant(target, initiator); });
    const Id session = array().login({target, initiator, {}, {endpoint}});
    const auto remove = [&](Change& change) { change.remove(target); };
    expectRefused(ErrorCode::InUse,
                  "Target \"iqn.2026-01.com.example:t1\" cannot be removed while it has logical "
                  "units: 1.",
                  remove);
    change([&](Change& change) { change.remove(unit); });
    expectRefused(
        ErrorCode::InUse,
        "Target \"iqn.2026-01.com.example:t1\" cannot be removed while it has sessions: 1.",
        remove);
    expectRefused(ErrorCode::InUse,
                  "Endpoint \"192.0.2.10\" cannot be removed while it has connections: 1.",
                  [&](Change& change) { change.remove(endpoint); });
    array().logout(session);
    change(remove);
    EXPECT_EQ(now()->sessionSettings(0x23000001), nullptr);
    EXPECT_EQ(now()->connectionSettings(0x22000001), nullptr);
    EXPECT_TRUE(now()->associated(initiator, CLASSID_TARGET).empty());
    EXPECT_EQ(now()->loginStatistics(target).successfulLogins, 0u);
    EXPECT_NO_THROW(change([&](Change& change) { change.remove(endpoint); }));
    EXPECT_TRUE(array().check().empty());
}

TEST_F(ChangeTest, SettingsGoWithTheirTarget) {
    addTarget();
    expectRefused(ErrorCode::NoRecord,
                  "Ovrin:23000001, a session setting, goes with its target and cannot be removed "
                  "by itself.",
                  [](Change& change) { change.remove(0x23000001); });
}

TEST_F(ChangeTest, NothingCanBeDoneToAnIdThatNamesNothing) {
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:17000001 names no object.",
                  [](Change& change) { change.remove(0x17000001); });
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:00000000 names no object.",
                  [](Change& change) { change.remove(0); });
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:0D000001 names no object of the class initiator.",
                  [](Change& change) {
                      change.modify(0x0D000001, Initiator{"iqn.2026-01.com.example:x", {}});
                  });
}

TEST_F(ChangeTest, AGrantNeedsATargetAndAnInitiator) {
    const Id target = addTarget();
    const Id initiator = addInitiator();
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:00000000 names no object of the class initiator.",
                  [&](Change& change) { change.grant(target, 0); });
    expectRefused(ErrorCode::NoSuchObject, "Ovrin:0E000009 names no object of the class target.",
                  [&](Change& change) { change.revoke(0x0E000009, initiator); });
    expectRefused(ErrorCode::WrongClass,
                  "Ovrin:0D000001 is of the class initiator, and the class target was asked for.",
                  [&](Change& change) { change.grant(initiator, target); });
}

TEST_F(ChangeTest, SettingsAreCheckedAndKept) {
    addTarget();
    SessionParameters session;
    session.maxBurstLength = 512;
    expectRefused(ErrorCode::ParametersDisagree,
                  "FirstBurstLength 65536 of Ovrin:23000001 is longer than its MaxBurstLength 512 "
                  "(RFC 7143 section 13.14).",
                  [&](Change& change) { change.modify(0x23000001, session); });
    session.firstBurstLength = 512;
    ConnectionParameters connection;
    connection.primaryAuthMethod = Pegasus::DRAV_AUTH_KERBEROS;
    change([&](Change& change) {
        change.modify(0x23000001, session);
        change.modify(0x22000001, connection);
    });
    reopen();
    EXPECT_EQ(*now()->sessionSettings(0x23000001), session);
    EXPECT_EQ(*now()->connectionSettings(0x22000001), connection);
}

TEST_F(ChangeTest, ASessionNeedsAGrantAndGetsItsNumbers) {
    const Id target = addTarget();
    const Id initiator = addInitiator();
    const Id endpoint = addEndpoint();
    Session session;
    session.target = target;
    session.initiator = initiator;
    session.parameters.maxConnections = 2;
    expectRefused(ErrorCode::LoginNotGranted,
                  "Initiator \"iqn.2026-01.com.example:host1\" has no grant for target "
                  "\"iqn.2026-01.com.example:t1\".",
                  [&](Change& change) { change.create(session); });
    change([&](Change& change) { change.grant(target, initiator); });
    const Id first = create(session);
    const Id second = create(session);
    EXPECT_NE(now()->session(first)->tsih, 0);
    EXPECT_NE(now()->session(first)->tsih, now()->session(second)->tsih);

    Connection connection;
    connection.session = first;
    connection.endpoint = endpoint;
    const Id one = create(connection);
    const Id two = create(connection);
    EXPECT_EQ(now()->connection(one)->cid, 1);
    EXPECT_EQ(now()->connection(two)->cid, 2);
    expectRefused(ErrorCode::LoginNoPath,
                  "Session Ovrin:11000001 may have 2 connections (MaxConnections, RFC 7143 section "
                  "13.2).",
                  [&](Change& change) { change.create(connection); });
    change([&](Change& change) { change.remove(one); });
    EXPECT_EQ(now()->associated(first, CLASSID_ISCSI_CONNECTION), Ids{two});
    change([&](Change& change) { change.remove(first); });
    EXPECT_EQ(now()->count(CLASSID_ISCSI_CONNECTION), 0u);
}

TEST_F(ChangeTest, BadValuesAreRefusedInEveryClass) {
    const auto code = [&](const auto& record) { return failureOf([&] { create(record); }).code; };
    EXPECT_EQ(code(Target{"t1", {}}), ErrorCode::BadName);
    EXPECT_EQ(code(Initiator{"host1", {}}), ErrorCode::BadName);
    EXPECT_EQ(code(Initiator{"iqn.2026-01.com.example:h", "\n"}), ErrorCode::BadSecret);
    EXPECT_EQ(code(Target{"iqn.2026-01.com.example:t", "\n"}), ErrorCode::BadSecret);
    EXPECT_EQ(code(Volume{"xyz", {}, 0, 0}), ErrorCode::BadName);
    EXPECT_EQ(code(Volume{"AA", "\n", 0, 0}), ErrorCode::BadText);
    EXPECT_EQ(code(Endpoint{"nowhere", 3260}), ErrorCode::BadName);
    EXPECT_EQ(failureOf([&] { change([](Change& change) {
                                  change.setNames({"", ""});
                              }); }).code,
              ErrorCode::BadName);
    EXPECT_EQ(now()->version(), 0u);
}

class NamesTest : public ArrayFixture {};

TEST_F(NamesTest, AreKeptPreparedAndFoundHoweverTheyAreWritten) {
    const std::string start = "iqn.2026-01.com.example:";
    const Id initiator = create(Initiator{"IQN.2026-01.com.example:B\xC3\x9C"
                                          "CHER",
                                          {}});
    const Id target = create(Target{start + "bu\xCC\x88"
                                            "cher",
                                    {}});
    EXPECT_EQ(now()->initiator(initiator)->name, start + "b\xC3\xBC"
                                                         "cher");
    EXPECT_EQ(now()->target(target)->name, start + "b\xC3\xBC"
                                                   "cher");
    for (const char* name : {"b\xC3\xBC"
                             "cher",
                             "B\xC3\x9C"
                             "cher",
                             "BU\xCC\x88"
                             "CHER"}) {
        EXPECT_EQ(now()->initiatorByName(start + name), initiator);
        EXPECT_EQ(now()->targetByName(start + name), target);
        EXPECT_EQ(failureOf([&] {
                      create(Initiator{start + name, {}});
                  }).code,
                  ErrorCode::NameTaken);
    }
    change([&](Change& change) { change.modify(target, Target{start + "T1", {}}); });
    EXPECT_EQ(now()->target(target)->name, start + "t1");
}

TEST_F(NamesTest, OfAnEarlierArrayAreFoundAndTold) {
    const std::string old = "iqn.2026-01.com.example:\xC3\x9C\xE2\x80\xAE";
    const Id initiator = addInitiator();
    _array.reset();
    SQLite::Database(databaseIn(state()).string(), SQLite::OPEN_READWRITE)
        .exec("UPDATE initiator SET name = '" + old + "'");
    reopen();
    EXPECT_EQ(now()->initiatorByName(old), initiator);
    const std::vector<std::string> findings = array().check();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0], "Ovrin:0D000001: \"iqn.2026-01.com.example:?????\" is no iSCSI name: it "
                           "has a character that is not shown.");
    change([&](Change& change) { change.remove(initiator); });
    EXPECT_TRUE(array().check().empty());
}

} // namespace
} // namespace array
