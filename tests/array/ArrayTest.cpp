#include "array/model/Ids.h"
#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_TARGET;
using Pegasus::CLASSID_TCP_ENDPOINT;
using Pegasus::CLASSID_VOLUME;

using Ids = std::vector<Id>;

class ArrayTest : public ArrayFixture {};

TEST_F(ArrayTest, ANewArrayHasNamesAndNoObjects) {
    EXPECT_FALSE(now()->names().host.empty());
    EXPECT_FALSE(now()->names().system.empty());
    EXPECT_EQ(now()->version(), 0u);
    for (const CLASSID_e objectClass : {CLASSID_TARGET, CLASSID_INITIATOR, CLASSID_VOLUME}) {
        EXPECT_EQ(now()->count(objectClass), 0u);
    }
}

TEST_F(ArrayTest, IdsAreClassAndSerialFromOne) {
    EXPECT_EQ(addTarget(), 0x0E000001u);
    EXPECT_EQ(addTarget("t2"), 0x0E000002u);
    EXPECT_EQ(addInitiator(), 0x0D000001u);
    EXPECT_EQ(addVolume(), 0x17000001u);
    EXPECT_EQ(addEndpoint(), 0x09000001u);
    EXPECT_EQ(addUnit(0x0E000001, 0, 0x17000001), 0x0F000001u);
}

TEST_F(ArrayTest, ASerialIsNeverUsedAgainAlsoAfterARestart) {
    const Id first = addInitiator();
    change([&](Change& change) { change.remove(first); });
    const Id second = addInitiator();
    EXPECT_EQ(second, first + 1);
    change([&](Change& change) { change.remove(second); });
    reopen();
    EXPECT_EQ(addInitiator(), second + 1);
}

TEST_F(ArrayTest, ReopeningGivesTheSameArray) {
    change([](Change& change) { change.setNames({"array1.example.com", "array1"}); });
    const Id target = addTarget();
    const Id initiator = addInitiator("host1", "a secret of enough bytes");
    const Id volume = addVolume();
    const Id unit = addUnit(target, 7, volume);
    change([&](Change& change) { change.grant(target, initiator); });
    const Id endpoint = addEndpoint();
    const Id session = array().login({target, initiator, "a secret of enough bytes", {endpoint}});
    const std::uint64_t version = now()->version();

    reopen();
    EXPECT_EQ(now()->version(), version);
    EXPECT_EQ(now()->names().host, "array1.example.com");
    EXPECT_EQ(now()->names().system, "array1");
    EXPECT_EQ(now()->target(target)->name, "iqn.2026-01.com.example:t1");
    EXPECT_EQ(now()->initiator(initiator)->secret, "a secret of enough bytes");
    EXPECT_EQ(now()->volume(volume)->size, 1u << 30);
    EXPECT_EQ(now()->volume(volume)->elementName, "mail");
    EXPECT_EQ(now()->logicalUnit(unit)->lun, 7u);
    EXPECT_EQ(now()->unitByLun(target, 7), unit);
    EXPECT_TRUE(now()->granted(target, initiator));
    EXPECT_EQ(now()->associated(target, Pegasus::CLASSID_ISCSI_SESSION), Ids{session});
    EXPECT_EQ(now()->countAssociated(endpoint, Pegasus::CLASSID_ISCSI_CONNECTION), 1u);
    EXPECT_EQ(now()->loginStatistics(target).successfulLogins, 1u);
    EXPECT_GT(now()->interfaceStatistics(endpoint).octetsReceived, 0u);
    EXPECT_EQ(*now()->sessionSettings(now()->sessionSettingsOf(target)), SessionParameters());
    EXPECT_TRUE(array().check().empty());
}

TEST_F(ArrayTest, ASnapshotStaysAsItWas) {
    const Id target = addTarget();
    const SnapshotPtr before = now();
    change([&](Change& change) { change.remove(target); });
    EXPECT_NE(before->target(target), nullptr);
    EXPECT_EQ(now()->target(target), nullptr);
}

TEST_F(ArrayTest, AChangeIsSeenWholeOrNotAtAll) {
    const std::uint64_t version = now()->version();
    EXPECT_THROW(change([&](Change& change) {
                     change.create(Target{"iqn.2026-01.com.example:t1", {}});
                     change.create(Initiator{"iqn.2026-01.com.example:host1", {}});
                     EXPECT_EQ(change.snapshot().count(CLASSID_TARGET), 1u);
                     EXPECT_EQ(now()->count(CLASSID_TARGET), 0u);
                     throw std::runtime_error("changed my mind");
                 }),
                 std::runtime_error);
    EXPECT_EQ(now()->count(CLASSID_TARGET), 0u);
    reopen();
    EXPECT_EQ(now()->count(CLASSID_TARGET), 0u);
    EXPECT_EQ(now()->version(), version);
    EXPECT_EQ(addTarget(), 0x0E000001u);
}

TEST_F(ArrayTest, AChangeGoesOnAfterARuleWasBroken) {
    change([](Change& change) {
        change.create(Target{"iqn.2026-01.com.example:t1", {}});
        EXPECT_EQ(failureOf([&] { change.create(Target{"bad", {}}); }).code, ErrorCode::BadName);
        change.create(Target{"iqn.2026-01.com.example:t2", {}});
    });
    reopen();
    EXPECT_EQ(now()->count(CLASSID_TARGET), 2u);
}

TEST_F(ArrayTest, AChangeOfNothingIsNoCommit) {
    const Id target = addTarget();
    const Id initiator = addInitiator();
    change([&](Change& change) { change.grant(target, initiator); });
    const std::uint64_t version = now()->version();
    change([&](Change& change) { change.grant(target, initiator); });
    change([](Change&) {});
    EXPECT_EQ(now()->version(), version);
    change([&](Change& change) { change.revoke(target, initiator); });
    EXPECT_EQ(now()->version(), version + 1);
    change([&](Change& change) { change.revoke(target, initiator); });
    EXPECT_EQ(now()->version(), version + 1);
}

TEST_F(ArrayTest, ListsAreInAscendingOrder) {
    Ids targets;
    for (int i = 0; i < 100; ++i) {
        targets.push_back(addTarget("t" + std::to_string(i)));
    }
    EXPECT_EQ(now()->ids(CLASSID_TARGET), targets);
    EXPECT_EQ(now()->associated(Pegasus::SYSTEM_OBJECT_ID, CLASSID_TARGET), targets);
    const Id initiator = addInitiator();
    change([&](Change& change) {
        for (auto target = targets.rbegin(); target != targets.rend(); ++target) {
            change.grant(*target, initiator);
        }
    });
    EXPECT_EQ(now()->associated(initiator, CLASSID_TARGET), targets);
    EXPECT_EQ(now()->associated(targets[3], CLASSID_INITIATOR), Ids{initiator});
}

TEST_F(ArrayTest, RootsListTheirClassesAndNoOthers) {
    const Id target = addTarget();
    const Id initiator = addInitiator();
    const Id endpoint = addEndpoint();
    addVolume();
    const auto session = Pegasus::SESSION_ROOT_OBJECT_ID;
    const auto system = Pegasus::SYSTEM_OBJECT_ID;
    EXPECT_EQ(now()->associated(session, CLASSID_INITIATOR), Ids{initiator});
    EXPECT_EQ(now()->associated(system, CLASSID_TARGET), Ids{target});
    EXPECT_EQ(now()->associated(system, CLASSID_TCP_ENDPOINT), Ids{endpoint});
    EXPECT_TRUE(now()->associated(session, CLASSID_TARGET).empty());
    EXPECT_TRUE(now()->associated(system, CLASSID_INITIATOR).empty());
    EXPECT_TRUE(now()->associated(system, CLASSID_VOLUME).empty());
}

TEST_F(ArrayTest, NothingIsAssociatedWithAnIdThatNamesNothing) {
    for (const Id id : {Id{0}, Id{0x0E000009}, Id{0xFFFFFFFF}}) {
        EXPECT_TRUE(now()->associated(id, CLASSID_LOGICAL_UNIT).empty()) << keyText(id);
    }
}

TEST_F(ArrayTest, ATargetHasSettingsOfItsSerial) {
    addTarget();
    const Id target = addTarget("t2");
    EXPECT_EQ(now()->sessionSettingsOf(target), 0x23000002u);
    EXPECT_EQ(now()->connectionSettingsOf(target), 0x22000002u);
    EXPECT_EQ(now()->targetOfSettings(0x23000002), target);
    EXPECT_EQ(now()->targetOfSettings(0x22000002), target);
    EXPECT_EQ(now()->targetOfSettings(0x22000003), 0u);
    EXPECT_EQ(now()->associated(target, Pegasus::CLASSID_SESSION_SETTINGS), Ids{0x23000002});
    EXPECT_EQ(now()->sessionSettingsOf(target + 1), 0u);
}

TEST_F(ArrayTest, FindsObjectsByNameWhateverTheCase) {
    const Id target = addTarget();
    const Id volume = addVolume("60014051A2B3C4D5");
    const Id endpoint = create(Endpoint{"2001:db8::A", 3260});
    EXPECT_EQ(now()->targetByName("iqn.2026-01.com.example:t1"), target);
    EXPECT_EQ(now()->targetByName("IQN.2026-01.COM.EXAMPLE:T1"), target);
    EXPECT_EQ(now()->initiatorByName("iqn.2026-01.com.example:t1"), 0u);
    EXPECT_EQ(now()->volumeByName("60014051a2b3c4d5"), volume);
    EXPECT_EQ(now()->volumeByName(""), 0u);
    EXPECT_EQ(now()->endpointByPortal("2001:db8::a", 3260), endpoint);
    EXPECT_EQ(now()->endpointByPortal("2001:db8::a", 3261), 0u);
}

TEST_F(ArrayTest, ARenamedObjectIsFoundByItsNewNameOnly) {
    const Id target = addTarget();
    change([&](Change& change) { change.modify(target, Target{"iqn.2026-01.com.example:x", {}}); });
    EXPECT_EQ(now()->targetByName("iqn.2026-01.com.example:t1"), 0u);
    EXPECT_EQ(now()->targetByName("iqn.2026-01.com.example:x"), target);
}

} // namespace
} // namespace array
