#include "engine/DRAVEngine.h"

#include <cstdlib>

#include "array/adapter/ThisArray.h"
#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVKeys.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/DRAVTarget.h"
#include "engine/DRAVVolume.h"
#include "tests/array/ArrayFixture.h"

namespace Pegasus {
namespace {

using array::ErrorCode;
using array::expectFailure;
using array::failureOf;
using array::toUtf8;

// The engine of the test's process, over an array made for it. There is one array for all tests of
// a process, as there is one engine; each test uses objects of its own.
class EngineTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static const array::TemporaryDirectory parent;
        directory = parent.path() / "state";
        setenv("DRAV_STATE_DIR", directory.c_str(), 1);
    }
    void SetUp() override {
        if (createsState()) {
            array::Array::openOrCreate(directory);
        }
    }
    virtual bool createsState() const { return true; }

    DRAVEngine& engine = *DRAVEngine::_getInstance();

    template<class Record>
    std::unique_ptr<Record> read(CLASSID_e objectClass, Uint32 id) {
        ManagedObject* record = engine.getObject(objectClass, id);
        EXPECT_NE(dynamic_cast<Record*>(record), nullptr);
        return std::unique_ptr<Record>(dynamic_cast<Record*>(record));
    }

    static String name(const std::string& rest) {
        return array::fromUtf8("iqn.2026-01.com.example:" + rest);
    }
    Uint32 addInitiator(const std::string& rest) {
        return engine.createObject(CLASSID_INITIATOR, DRAVInitiator(name(rest)));
    }
    Uint32 addTarget(const std::string& rest) {
        return engine.createObject(CLASSID_TARGET, DRAVTarget(name(rest)));
    }
    Uint32 addVolume(const std::string& volumeName) {
        DRAVVolume volume;
        volume.name = array::fromUtf8(volumeName);
        volume.elementName = "mail";
        volume.size = 4096;
        return engine.createObject(CLASSID_VOLUME, volume);
    }

    static inline std::filesystem::path directory;
};

class EngineWithoutStateTest : public EngineTest {
protected:
    bool createsState() const override { return false; }
};

TEST_F(EngineWithoutStateTest, SaysWhatToDoInEachOperationUntilItCanReadIt) {
    if (std::filesystem::exists(directory)) {
        GTEST_SKIP() << "another test of this process has opened the engine";
    }
    EXPECT_FALSE(DRAVEngine::_OvrinHostNamePtr->size() == 0);
    for (int round = 0; round < 2; ++round) {
        expectFailure(ErrorCode::StateMissing,
                      directory.string() +
                          ": there is no such state directory. Make an array "
                          "with: arrayctl --state " +
                          directory.string() + " import FILE",
                      [&] { engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET); });
    }
    array::Array::openOrCreate(directory)->change([](array::Change& change) {
        change.setNames({"late.example.com", "late"});
    });
    EXPECT_EQ(engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET).size(), 0u);
    EXPECT_EQ(*DRAVEngine::_OvrinHostNamePtr, "late.example.com");
    EXPECT_EQ(*DRAVEngine::_OvrinSystemNamePtr, "late");
}

TEST_F(EngineTest, IsOneForTheProcess) {
    EXPECT_EQ(DRAVEngine::_getInstance(), &engine);
}

TEST_F(EngineTest, KeepsAnInitiator) {
    DRAVInitiator made(name("keep"));
    made.secret = "a secret of enough bytes";
    const Uint32 id = engine.createObject(CLASSID_INITIATOR, made);
    EXPECT_EQ(id >> 24, 13u);
    EXPECT_EQ(made.objectID, 0u);

    auto record = read<DRAVInitiator>(CLASSID_INITIATOR, id);
    EXPECT_EQ(record->objectID, id);
    EXPECT_EQ(record->name, name("keep"));
    EXPECT_EQ(record->secret, "a secret of enough bytes");

    record->secret = "another one of enough bytes";
    EXPECT_EQ(read<DRAVInitiator>(CLASSID_INITIATOR, id)->secret, "a secret of enough bytes");
    engine.modifyObject(CLASSID_INITIATOR, *record);
    EXPECT_EQ(read<DRAVInitiator>(CLASSID_INITIATOR, id)->secret, "another one of enough bytes");

    engine.deleteObject(CLASSID_INITIATOR, id);
    EXPECT_EQ(failureOf([&] { engine.getObject(CLASSID_INITIATOR, id); }).code,
              ErrorCode::NoSuchObject);
}

TEST_F(EngineTest, SessionPresenceFollowsTheSessions) {
    const Uint32 target = addTarget("presence");
    const Uint32 initiator = addInitiator("presence");
    engine.createAssociation(target, initiator);
    EXPECT_EQ(read<DRAVTarget>(CLASSID_TARGET, target)->sessionPresence, 0u);
    array::Array& theArray = array::theArray();
    Uint32 endpoint = 0;
    theArray.change([&](array::Change& change) {
        endpoint = change.create(array::Endpoint{"192.0.2.77", 3260});
    });
    const Uint32 session = theArray.login({target, initiator, {}, {endpoint}});
    EXPECT_NE(read<DRAVTarget>(CLASSID_TARGET, target)->sessionPresence, 0u);

    // A target read before, and written back now, does not bring old sessions with it.
    auto record = read<DRAVTarget>(CLASSID_TARGET, target);
    theArray.logout(session);
    engine.modifyObject(CLASSID_TARGET, *record);
    EXPECT_EQ(read<DRAVTarget>(CLASSID_TARGET, target)->sessionPresence, 0u);
}

TEST_F(EngineTest, KeepsALogicalUnitAlsoWithoutItsVolume) {
    const Uint32 target = addTarget("units");
    const Uint32 volume = addVolume("0A0B0C0D");
    const Uint32 id =
        engine.createObject(CLASSID_LOGICAL_UNIT, DRAVLogicalUnit(target, 3, 1, volume));
    auto unit = read<DRAVLogicalUnit>(CLASSID_LOGICAL_UNIT, id);
    EXPECT_EQ(unit->targetID, target);
    EXPECT_EQ(unit->lun, 3u);
    EXPECT_EQ(unit->readOnly, 1u);
    EXPECT_EQ(unit->volumeID, volume);
    EXPECT_EQ(unit->volumeName, "0A0B0C0D");

    unit->readOnly = 0;
    engine.modifyObject(CLASSID_LOGICAL_UNIT, *unit);
    EXPECT_EQ(read<DRAVLogicalUnit>(CLASSID_LOGICAL_UNIT, id)->readOnly, 0u);

    engine.deleteObject(CLASSID_VOLUME, volume);
    unit = read<DRAVLogicalUnit>(CLASSID_LOGICAL_UNIT, id);
    EXPECT_EQ(unit->volumeID, 0u);
    EXPECT_EQ(unit->volumeName, "0A0B0C0D");
}

TEST_F(EngineTest, FindsAVolumeByItsKey) {
    const Uint32 id = addVolume("60014051A2B3C4D5E6F7A8B9C0D1E200");
    EXPECT_EQ(read<DRAVVolume>(CLASSID_VOLUME, id)->size, 4096u);
    EXPECT_EQ(engine.getObjectIDByKey(CLASSID_VOLUME,
                                      ManagedObject::hexToBin("60014051a2b3c4d5e6f7a8b9c0d1e200")),
              id);
    EXPECT_EQ(engine.getObjectIDByKey(CLASSID_VOLUME, ManagedObject::hexToBin("60014051")), 0u);
    EXPECT_EQ(engine.getObjectIDByKey(CLASSID_VOLUME, String()), 0u);
    EXPECT_EQ(engine.getObjectIDByKey(CLASSID_TARGET,
                                      ManagedObject::hexToBin("60014051A2B3C4D5E6F7A8B9C0D1E200")),
              0u);
}

TEST_F(EngineTest, FindsInitiatorsAndTargetsByName) {
    const Uint32 target = addTarget("found");
    const Uint32 initiator = addInitiator("found");
    EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_TARGET, name("found")), target);
    EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, name("found")), initiator);
    EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, name("nobody")), 0u);
    EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_VOLUME, name("found")), 0u);
    EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, String()), 0u);
}

TEST_F(EngineTest, GrantsWorkInBothDirectionsAndTwiceIsOnce) {
    const Uint32 target = addTarget("grant");
    const Uint32 initiator = addInitiator("grant");
    engine.createAssociation(target, initiator);
    engine.createAssociation(target, initiator);
    const Array<Uint32> hosts = engine.enumerateAssociatedObjects(target, CLASSID_INITIATOR);
    ASSERT_EQ(hosts.size(), 1u);
    EXPECT_EQ(hosts[0], initiator);
    const Array<Uint32> targets = engine.enumerateAssociatedObjects(initiator, CLASSID_TARGET);
    ASSERT_EQ(targets.size(), 1u);
    EXPECT_EQ(targets[0], target);
    engine.deleteAssociation(target, initiator);
    engine.deleteAssociation(target, initiator);
    EXPECT_EQ(engine.enumerateAssociatedObjects(target, CLASSID_INITIATOR).size(), 0u);
    expectFailure(ErrorCode::NoSuchObject, "Ovrin:00000000 names no object of the class initiator.",
                  [&] { engine.createAssociation(target, 0); });
    expectFailure(ErrorCode::NoSuchObject, "Ovrin:00000000 names no object of the class initiator.",
                  [&] { engine.deleteAssociation(target, 0); });
}

TEST_F(EngineTest, SettingsAreReadChangedAndJudged) {
    const Uint32 serial = addTarget("settings") & 0xFFFFFF;
    const Uint32 sessionId = CLASSID_SESSION_SETTINGS << 24 | serial;
    auto session = read<DRAVSessionSettings>(CLASSID_SESSION_SETTINGS, sessionId);
    EXPECT_EQ(session->maxBurstLength, 262144u);
    session->maxConnections = 2;
    session->initialR2T = 0;
    session->immediateData = 0;
    session->maxOutstandingR2T = 3;
    session->firstBurstLength = 1024;
    session->maxBurstLength = 2048;
    session->dataSequenceInOrder = 0;
    session->dataPDUInOrder = 0;
    session->defaultTime2Wait = 4;
    session->defaultTime2Retain = 5;
    session->errorRecoveryLevel = 2;
    engine.modifyObject(CLASSID_SESSION_SETTINGS, *session);
    const auto kept = read<DRAVSessionSettings>(CLASSID_SESSION_SETTINGS, sessionId);
    EXPECT_EQ(array::theArray().snapshot()->sessionSettings(sessionId)->maxOutstandingR2T, 3u);
    EXPECT_EQ(kept->maxConnections, 2u);
    EXPECT_EQ(kept->firstBurstLength, 1024u);
    EXPECT_EQ(kept->errorRecoveryLevel, 2u);
    session->firstBurstLength = 4096;
    EXPECT_EQ(failureOf([&] { engine.modifyObject(CLASSID_SESSION_SETTINGS, *session); }).code,
              ErrorCode::ParametersDisagree);

    const Uint32 connectionId = CLASSID_CONNECTION_SETTINGS << 24 | serial;
    auto connection = read<DRAVConnectionSettings>(CLASSID_CONNECTION_SETTINGS, connectionId);
    EXPECT_EQ(connection->primaryHeaderDigest, DRAV_DIGEST_CRC32C);
    connection->primaryHeaderDigest = DRAV_DIGEST_NONE;
    connection->markersOnReceive = 1;
    engine.modifyObject(CLASSID_CONNECTION_SETTINGS, *connection);
    connection = read<DRAVConnectionSettings>(CLASSID_CONNECTION_SETTINGS, connectionId);
    EXPECT_EQ(connection->primaryHeaderDigest, DRAV_DIGEST_NONE);
    EXPECT_EQ(connection->markersOnReceive, 1u);
    connection->primaryAuthMethod = DRAVAuthSettingFromSMI(99).code;
    EXPECT_EQ(
        failureOf([&] { engine.modifyObject(CLASSID_CONNECTION_SETTINGS, *connection); }).code,
        ErrorCode::BadParameter);

    for (const CLASSID_e objectClass : {CLASSID_SESSION_SETTINGS, CLASSID_CONNECTION_SETTINGS}) {
        EXPECT_EQ(failureOf([&] { engine.createObject(objectClass, *connection); }).code,
                  ErrorCode::NoRecord);
    }
}

TEST_F(EngineTest, AnIdUnderAnotherClassIsAnError) {
    const Uint32 target = addTarget("class");
    const std::string key = toUtf8(DRAVObjectKey(target));
    expectFailure(ErrorCode::WrongClass,
                  key + " is of the class target, and the class initiator was asked for.",
                  [&] { engine.getObject(CLASSID_INITIATOR, target); });
    expectFailure(ErrorCode::WrongClass,
                  key + " is of the class target, and the class volume was asked for.",
                  [&] { engine.deleteObject(CLASSID_VOLUME, target); });
    expectFailure(ErrorCode::NoSuchObject, "Ovrin:17FFFFFF names no object of the class volume.",
                  [&] { engine.deleteObject(CLASSID_VOLUME, 0x17FFFFFF); });
    EXPECT_NE(read<DRAVTarget>(CLASSID_TARGET, target), nullptr);
}

TEST_F(EngineTest, TheIdOfATextThatIsNoKeyTextNamesNothing) {
    const Uint32 none = DRAVObjectID(String("host1")).id;
    const char* const text = "A key that is not \"Ovrin:\" and eight upper-case hexadecimal digits "
                             "names no object of the class initiator.";
    expectFailure(ErrorCode::BadKeyText, text, [&] { engine.getObject(CLASSID_INITIATOR, none); });
    expectFailure(ErrorCode::BadKeyText, text,
                  [&] { engine.deleteObject(CLASSID_INITIATOR, none); });
    expectFailure(ErrorCode::BadKeyText, text,
                  [&] { engine.createAssociation(addTarget("of-nobody"), none); });
    EXPECT_EQ(engine.enumerateAssociatedObjects(none, CLASSID_TARGET).size(), 0u);
}

TEST_F(EngineTest, ClassesWithoutARecordAndRecordsOfAnotherClassAreErrors) {
    expectFailure(ErrorCode::NoRecord, "Objects of the class session (17) have no record.",
                  [&] { engine.getObject(CLASSID_ISCSI_SESSION, 0x11000001); });
    expectFailure(ErrorCode::NoRecord, "Objects of the class object (99) have no record.",
                  [&] { engine.getObject(static_cast<CLASSID_e>(99), 1); });
    expectFailure(ErrorCode::NoRecord, "The record given is none of the class target.",
                  [&] { engine.createObject(CLASSID_TARGET, DRAVVolume()); });
    expectFailure(ErrorCode::NoRecord, "The record given is none of the class volume.",
                  [&] { engine.modifyObject(CLASSID_VOLUME, DRAVTarget(name("x"))); });
}

TEST_F(EngineTest, ARecordThatWasNeverReadCannotBeStored) {
    expectFailure(ErrorCode::NoSuchObject, "Ovrin:00000000 names no object of the class initiator.",
                  [&] { engine.modifyObject(CLASSID_INITIATOR, DRAVInitiator(name("new"))); });
}

TEST_F(EngineTest, AListIsInAscendingOrder) {
    const Uint32 initiator = addInitiator("order");
    const Uint32 first = addTarget("order1");
    const Uint32 second = addTarget("order2");
    engine.createAssociation(second, initiator);
    engine.createAssociation(first, initiator);
    const Array<Uint32> targets = engine.enumerateAssociatedObjects(initiator, CLASSID_TARGET);
    ASSERT_EQ(targets.size(), 2u);
    EXPECT_EQ(targets[0], first);
    EXPECT_EQ(targets[1], second);
    EXPECT_EQ(engine.enumerateAssociatedObjects(0x0EFFFFFF, CLASSID_INITIATOR).size(), 0u);
}

TEST_F(EngineTest, NamesFollowTheArray) {
    array::theArray().change([](array::Change& change) {
        change.setNames({"renamed.example.com", "renamed"});
    });
    engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
    EXPECT_EQ(*DRAVEngine::_OvrinHostNamePtr, "renamed.example.com");
    EXPECT_EQ(*DRAVEngine::_OvrinSystemNamePtr, "renamed");
}

// Before its first operation as well.
TEST_F(EngineTest, AProviderThatAsksForTheEngineFindsTheNewestNames) {
    array::Array::open(directory)->change([](array::Change& change) {
        change.setNames({"beside.example.com", "beside"});
    });
    DRAVEngine::_getInstance();
    EXPECT_EQ(*DRAVEngine::_OvrinHostNamePtr, "beside.example.com");
    EXPECT_EQ(*DRAVEngine::_OvrinSystemNamePtr, "beside");
}

TEST_F(EngineTest, FailuresAreCIMFailures) {
    EXPECT_THROW(engine.getObject(CLASSID_TARGET, 0), CIMOperationFailedException);
    try {
        engine.getObject(CLASSID_TARGET, 0);
    } catch (const CIMException& failure) {
        EXPECT_EQ(failure.getCode(), CIM_ERR_FAILED);
    }
}

} // namespace
} // namespace Pegasus
