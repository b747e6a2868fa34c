#include "tests/providers/masking/ControllerConfigurationServiceTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string LIST_HOSTS = "enumerateAssociatedObjects(0x0E000002, 13)";
const std::string LIST_UNITS = "enumerateAssociatedObjects(0x0E000002, 15)";

const std::string FIND_HOST1 = "getiSCSIObjectIDByName(13, \"iqn.host1\")";
const std::string HOST1_FOUND = "trace ObjectIDByName is: 218103809";
const std::string ALLOW_HOST1 = "createAssociation(0x0E000002, 0x0D000001)";

const std::string FIND_VOLUME1 = "getObjectIDByKey(23, 60A1)";
const std::string VOLUME1_FOUND = "trace ObjectID is: 385875969";
const std::string FIND_VOLUME2 = "getObjectIDByKey(23, 60A2)";
const std::string VOLUME2_FOUND = "trace ObjectID is: 385875970";
const std::string FIND_UNKNOWN = "getObjectIDByKey(23, FF)";
const std::string UNKNOWN_FOUND = "trace ObjectID is: 0";

const std::string SEARCHING = "trace Searching existing LU's ";
const std::string READ_UNIT1 = "getObject(15, 0x0F000001)";
const std::string READ_UNIT2 = "getObject(15, 0x0F000002)";
const std::string ADDING = "trace  Adding a new LU ";
const std::string ADDED = "trace Finished adding a new LU";

std::string createUnit(Uint32 lun, Uint32 access, Uint32 volume) {
    return "createObject(15, DRAVLogicalUnit{targetID=0x0E000002, lun=" + std::to_string(lun) +
           ", readOnly=" + std::to_string(access) + ", volumeID=" + idText(volume) +
           ", volumeName=\"\"})";
}

class ExposePathsTest : public ServiceTest {
protected:
    ExposePathsTest() { giveController(); }

    void give(std::initializer_list<const char*> volumes,
              std::initializer_list<const char*> numbers, std::initializer_list<int> accesses) {
        giveTexts("LUNames", volumes);
        giveTexts("DeviceNumbers", numbers);
        giveAccesses(accesses);
    }

    void expose() { invoke("ExposePaths"); }

    // What happens after the entry, in order, must be this.
    template<class... Entries>
    void expectLog(const Entries&... entries) {
        EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", entries...));
    }

    std::string outOfBounds() {
        return thrownBy<IndexOutOfBoundsException>([this] { expose(); });
    }

    std::string engineError() {
        return thrownBy<DRAVOperationFailedException>([this] { expose(); });
    }
};

TEST_F(ExposePathsTest, AllowsTheHostAndMapsTheVolumeInThisOrder) {
    map(UNIT1, VOLUME1);
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    give({"60A2"}, {"5"}, {2});
    expose();

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, ALLOW_HOST1, LIST_UNITS, FIND_VOLUME2,
              VOLUME2_FOUND, SEARCHING, READ_UNIT1, ADDING, ADDED, createUnit(5, 0, VOLUME2),
              "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, TheReturnValueIsAUint32) {
    expose();

    ASSERT_EQ(results.returnValues.size(), 1u);
    EXPECT_EQ(results.returnValues[0].getType(), CIMTYPE_UINT32);
}

TEST_F(ExposePathsTest, AHostThatMayReachTheTargetIsNotAllowedAgain) {
    associate(TARGET, CLASSID_INITIATOR, {HOST2, HOST1});
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    expose();

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, LIST_UNITS, "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, AHostThatIsListedTwiceIsAllowedTwice) {
    giveTexts("InitiatorPortIDs", {"iqn.host1", "iqn.host1"});
    expose();

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, ALLOW_HOST1, FIND_HOST1, HOST1_FOUND,
              ALLOW_HOST1, LIST_UNITS, "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, AnUnknownHostIsAllowedAsId0) {
    giveTexts("InitiatorPortIDs", {"iqn.nobody", "iqn.host1"});
    expose();

    expectLog(LIST_HOSTS, "getiSCSIObjectIDByName(13, \"iqn.nobody\")",
              "trace ObjectIDByName is: 0", "createAssociation(0x0E000002, 0x00000000)", FIND_HOST1,
              HOST1_FOUND, ALLOW_HOST1, LIST_UNITS, "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, AnUnknownHostIsNotAllowedIfId0IsAmongTheAllowed) {
    associate(TARGET, CLASSID_INITIATOR, {HOST1, 0});
    giveTexts("InitiatorPortIDs", {"iqn.nobody"});
    expose();

    EXPECT_THAT(calls(),
                ElementsAre(LIST_HOSTS, "getiSCSIObjectIDByName(13, \"iqn.nobody\")", LIST_UNITS));
}

TEST_F(ExposePathsTest, AVolumeThatIsMappedKeepsItsUnitAsItIs) {
    map(UNIT1, VOLUME1);
    give({"60A1"}, {"77"}, {2});
    expose();

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, SEARCHING, READ_UNIT1,
              "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, TheSearchStopsAtTheFirstUnitOfTheVolume) {
    map(UNIT2, VOLUME2);
    map(UNIT1, VOLUME1);
    map(0x0F000003, VOLUME1);
    give({"60A1"}, {}, {});
    expose();

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, SEARCHING, READ_UNIT2, SEARCHING,
              READ_UNIT1, "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, AVolumeThatIsListedTwiceIsMappedTwice) {
    give({"60A1", "60A1"}, {"1", "2"}, {2, 3});
    expose();

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, ADDING, ADDED,
              createUnit(1, 0, VOLUME1), FIND_VOLUME1, VOLUME1_FOUND, ADDING, ADDED,
              createUnit(2, 1, VOLUME1), "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, TheUnitsAreListedOnceForAllVolumes) {
    map(UNIT1, 0x17000009);
    give({"60A1", "60A2"}, {"1", "2"}, {2, 2});
    expose();

    EXPECT_THAT(calls(), ElementsAre(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, READ_UNIT1,
                                     createUnit(1, 0, VOLUME1), FIND_VOLUME2, READ_UNIT1,
                                     createUnit(2, 0, VOLUME2)));
}

TEST_F(ExposePathsTest, AnUnknownVolumeIsReturnValue4AndTheOthersAreMapped) {
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    give({"60A1", "FF", "60A2"}, {"1", "2", "3"}, {2, 2, 3});
    expose();

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, ALLOW_HOST1, LIST_UNITS, FIND_VOLUME1,
              VOLUME1_FOUND, ADDING, ADDED, createUnit(1, 0, VOLUME1), FIND_UNKNOWN, UNKNOWN_FOUND,
              FIND_VOLUME2, VOLUME2_FOUND, ADDING, ADDED, createUnit(3, 1, VOLUME2),
              "deliver uint32 4", "complete");
}

TEST_F(ExposePathsTest, AnUnknownVolumeIsNotSearchedForAmongTheUnits) {
    map(UNIT1, 0);
    give({"FF"}, {"1"}, {2});
    expose();

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_UNKNOWN, UNKNOWN_FOUND, "deliver uint32 4", "complete");
}

TEST_F(ExposePathsTest, AVolumeNameThatIsNotHexadecimalIsAnUnknownVolume) {
    give({"mail"}, {"1"}, {2});
    expose();

    expectLog(LIST_HOSTS, LIST_UNITS, "getObjectIDByKey(23, )", UNKNOWN_FOUND, "deliver uint32 4",
              "complete");
}

TEST_F(ExposePathsTest, TheDigitsOfAVolumeNameMayBeInLowerCase) {
    give({"60a1"}, {"1"}, {2});
    expose();

    EXPECT_THAT(calls(),
                ElementsAre(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, createUnit(1, 0, VOLUME1)));
}

TEST_F(ExposePathsTest, EachAccessHasItsCodeInTheUnit) {
    give({"60A1", "60A1", "60A1", "60A1", "60A1", "60A1"}, {"0", "1", "2", "3", "4", "5"},
         {0, 1, 2, 3, 4, 65535});
    expose();

    EXPECT_THAT(calls(),
                testing::IsSupersetOf({createUnit(0, 3, VOLUME1), createUnit(1, 3, VOLUME1),
                                       createUnit(2, 0, VOLUME1), createUnit(3, 1, VOLUME1),
                                       createUnit(4, 3, VOLUME1), createUnit(5, 3, VOLUME1)}));
}

TEST_F(ExposePathsTest, FewerNumbersThanVolumesFailAtTheVolumeWithoutANumber) {
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    give({"60A1", "60A2"}, {"1"}, {2, 2});

    EXPECT_EQ(outOfBounds(), "index out of bounds");

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, ALLOW_HOST1, LIST_UNITS, FIND_VOLUME1,
              VOLUME1_FOUND, ADDING, ADDED, createUnit(1, 0, VOLUME1), FIND_VOLUME2, VOLUME2_FOUND,
              ADDING, ADDED);
}

TEST_F(ExposePathsTest, FewerAccessesThanVolumesFailBeforeTheNumberIsRead) {
    give({"60A1", "60A2"}, {"1"}, {2});

    EXPECT_EQ(outOfBounds(), "index out of bounds");

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, ADDING, ADDED,
              createUnit(1, 0, VOLUME1), FIND_VOLUME2, VOLUME2_FOUND, ADDING);
}

TEST_F(ExposePathsTest, NumbersAndAccessesOfMappedAndUnknownVolumesAreNotRead) {
    map(UNIT1, VOLUME1);
    give({"60A1", "FF"}, {}, {});
    expose();

    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(4))));
}

TEST_F(ExposePathsTest, NumberAndAccessAreThoseAtTheVolumesIndex) {
    map(UNIT1, VOLUME1);
    give({"60A1", "FF", "60A2"}, {"11", "12", "13"}, {2, 2, 3});
    expose();

    EXPECT_THAT(calls(), testing::Contains(createUnit(13, 1, VOLUME2)));
}

TEST_F(ExposePathsTest, ANumberThatIsNotDecimalIsTheEnginesErrorAfterBothLines) {
    for (const char* number : {"", "0x1", "one", "-1", "4294967296"}) {
        clearLog();
        inParameters.clear();
        giveController();
        give({"60A1"}, {number}, {2});
        EXPECT_THAT(engineError(), testing::HasSubstr("\"" + std::string(number) + "\""));
        expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, ADDING, ADDED);
    }
}

TEST_F(ExposePathsTest, WithoutVolumesOnlyTheHostsAreAllowed) {
    map(UNIT1, VOLUME1);
    giveTexts("InitiatorPortIDs", {"iqn.host1", "iqn.host2"});
    expose();

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, ALLOW_HOST1,
              "getiSCSIObjectIDByName(13, \"iqn.host2\")", "trace ObjectIDByName is: 218103810",
              "createAssociation(0x0E000002, 0x0D000002)", LIST_UNITS, "deliver uint32 0",
              "complete");
}

TEST_F(ExposePathsTest, WithoutHostsOnlyTheVolumesAreMapped) {
    give({"60A1"}, {"0"}, {4});
    expose();

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, ADDING, ADDED,
              createUnit(0, 3, VOLUME1), "deliver uint32 0", "complete");
}

TEST_F(ExposePathsTest, AHostThatTheEngineRefusesEndsTheMethodAndEarlierOnesStay) {
    failNext("createAssociation", 3, "no such initiator", 1);
    giveTexts("InitiatorPortIDs", {"iqn.host1", "iqn.nobody"});
    give({"60A1"}, {"1"}, {2});

    EXPECT_EQ(engineError(), "no such initiator");

    expectLog(LIST_HOSTS, FIND_HOST1, HOST1_FOUND, ALLOW_HOST1,
              "getiSCSIObjectIDByName(13, \"iqn.nobody\")", "trace ObjectIDByName is: 0",
              "createAssociation(0x0E000002, 0x00000000)");
}

TEST_F(ExposePathsTest, AUnitThatTheEngineRefusesEndsTheMethodAndEarlierOnesStay) {
    failNext("createObject", 4, "LUN 1 is taken", 1);
    give({"60A1", "60A2", "60A1"}, {"1", "1", "2"}, {2, 2, 2});

    EXPECT_EQ(engineError(), "LUN 1 is taken");

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, ADDING, ADDED,
              createUnit(1, 0, VOLUME1), FIND_VOLUME2, VOLUME2_FOUND, ADDING, ADDED,
              createUnit(1, 0, VOLUME2));
}

TEST_F(ExposePathsTest, AUnitThatCannotBeReadEndsTheMethod) {
    associate(TARGET, CLASSID_LOGICAL_UNIT, {UNIT1});
    give({"60A1"}, {"1"}, {2});

    EXPECT_EQ(engineError(), "no record Ovrin:0F000001");

    expectLog(LIST_HOSTS, LIST_UNITS, FIND_VOLUME1, VOLUME1_FOUND, SEARCHING, READ_UNIT1);
    EXPECT_THAT(results.returnValues, IsEmpty());
}

} // namespace
