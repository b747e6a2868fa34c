#include "tests/providers/masking/ControllerConfigurationServiceTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

namespace {

const std::string LIST_UNITS = "enumerateAssociatedObjects(0x0E000002, 15)";

const std::string FIND_HOST1 = "getiSCSIObjectIDByName(13, \"iqn.host1\")";
const std::string HOST1_FOUND = "trace ObjectIDByName is: 218103809";
const std::string FIND_HOST2 = "getiSCSIObjectIDByName(13, \"iqn.host2\")";
const std::string HOST2_FOUND = "trace ObjectIDByName is: 218103810";
const std::string FORBID_HOST1 = "deleteAssociation(0x0E000002, 0x0D000001)";
const std::string FORBID_HOST2 = "deleteAssociation(0x0E000002, 0x0D000002)";

// The words of a host's line serve for volumes too.
const std::string FIND_VOLUME1 = "getObjectIDByKey(23, 60A1)";
const std::string VOLUME1_FOUND = "trace ObjectIDByName is: 385875969";
const std::string FIND_VOLUME2 = "getObjectIDByKey(23, 60A2)";
const std::string VOLUME2_FOUND = "trace ObjectIDByName is: 385875970";
const std::string FIND_UNKNOWN = "getObjectIDByKey(23, FF)";
const std::string UNKNOWN_FOUND = "trace ObjectIDByName is: 0";

const std::string READ_UNIT1 = "getObject(15, 0x0F000001)";
const std::string READ_UNIT2 = "getObject(15, 0x0F000002)";
const std::string DELETE_UNIT1 = "deleteObject(15, 0x0F000001)";
const std::string DELETE_UNIT2 = "deleteObject(15, 0x0F000002)";

class HidePathsTest : public ServiceTest {
protected:
    HidePathsTest() { giveController(); }

    void hide() { invoke("HidePaths"); }

    // What happens after the entry, in order, must be this.
    template<class... Entries>
    void expectLog(const Entries&... entries) {
        EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", entries...));
    }

    std::string engineError() {
        return thrownBy<DRAVOperationFailedException>([this] { hide(); });
    }
};

TEST_F(HidePathsTest, ForbidsTheHostsAndRemovesTheUnitsInThisOrder) {
    map(UNIT1, VOLUME1);
    map(UNIT2, VOLUME2);
    giveTexts("InitiatorPortIDs", {"iqn.host1", "iqn.host2"});
    giveTexts("LUNames", {"60A1", "60A2"});
    hide();

    expectLog(FIND_HOST1, HOST1_FOUND, FIND_HOST2, HOST2_FOUND, FIND_VOLUME1, VOLUME1_FOUND,
              FIND_VOLUME2, VOLUME2_FOUND, FORBID_HOST1, FORBID_HOST2, LIST_UNITS, READ_UNIT1,
              DELETE_UNIT1, READ_UNIT2, DELETE_UNIT2, "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, UnitsOfOtherVolumesAreReadAndStay) {
    map(UNIT1, VOLUME1);
    map(UNIT2, VOLUME2);
    giveTexts("LUNames", {"60A2"});
    hide();

    expectLog(FIND_VOLUME2, VOLUME2_FOUND, LIST_UNITS, READ_UNIT1, READ_UNIT2, DELETE_UNIT2,
              "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, AllUnitsOfTheVolumeAreRemoved) {
    map(UNIT1, VOLUME1);
    map(UNIT2, VOLUME1);
    giveTexts("LUNames", {"60A1"});
    hide();

    expectLog(FIND_VOLUME1, VOLUME1_FOUND, LIST_UNITS, READ_UNIT1, DELETE_UNIT1, READ_UNIT2,
              DELETE_UNIT2, "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, AVolumeThatIsListedTwiceHasItsUnitRemovedTwice) {
    map(UNIT1, VOLUME1);
    giveTexts("LUNames", {"60A1", "60A2", "60A1"});
    hide();

    expectLog(FIND_VOLUME1, VOLUME1_FOUND, FIND_VOLUME2, VOLUME2_FOUND, FIND_VOLUME1, VOLUME1_FOUND,
              LIST_UNITS, READ_UNIT1, DELETE_UNIT1, DELETE_UNIT1, "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, AnUnknownVolumeIsReturnValue4AndNothingIsChanged) {
    map(UNIT1, VOLUME1);
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    giveTexts("LUNames", {"60A1", "FF"});
    hide();

    expectLog(FIND_HOST1, HOST1_FOUND, FIND_VOLUME1, VOLUME1_FOUND, FIND_UNKNOWN, UNKNOWN_FOUND,
              "deliver uint32 4", "complete");
}

TEST_F(HidePathsTest, VolumesAfterAnUnknownOneAreNotLookedUp) {
    giveTexts("LUNames", {"FF", "60A1"});
    hide();

    expectLog(FIND_UNKNOWN, UNKNOWN_FOUND, "deliver uint32 4", "complete");
}

TEST_F(HidePathsTest, AVolumeNameThatIsNotHexadecimalIsAnUnknownVolume) {
    giveTexts("LUNames", {"mail"});
    hide();

    expectLog("getObjectIDByKey(23, )", UNKNOWN_FOUND, "deliver uint32 4", "complete");
}

TEST_F(HidePathsTest, TheReturnValueIsAUint32) {
    hide();
    giveTexts("LUNames", {"FF"});
    hide();

    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0)), CIMValue(Uint32(4))));
    for (const CIMValue& value : results.returnValues) {
        EXPECT_EQ(value.getType(), CIMTYPE_UINT32);
    }
}

TEST_F(HidePathsTest, AnUnknownHostIsForbiddenAsId0) {
    giveTexts("InitiatorPortIDs", {"iqn.nobody", "iqn.host1"});
    hide();

    expectLog("getiSCSIObjectIDByName(13, \"iqn.nobody\")", UNKNOWN_FOUND, FIND_HOST1, HOST1_FOUND,
              "deleteAssociation(0x0E000002, 0x00000000)", FORBID_HOST1, LIST_UNITS,
              "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, AHostThatIsListedTwiceIsForbiddenTwice) {
    giveTexts("InitiatorPortIDs", {"iqn.host1", "iqn.host1"});
    hide();

    expectLog(FIND_HOST1, HOST1_FOUND, FIND_HOST1, HOST1_FOUND, FORBID_HOST1, FORBID_HOST1,
              LIST_UNITS, "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, AHostIsForbiddenWhetherItWasAllowedOrNot) {
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    hide();

    EXPECT_THAT(calls(), ElementsAre(FIND_HOST1, FORBID_HOST1, LIST_UNITS));
}

TEST_F(HidePathsTest, WithoutVolumesOnlyTheHostsAreForbidden) {
    map(UNIT1, VOLUME1);
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    hide();

    expectLog(FIND_HOST1, HOST1_FOUND, FORBID_HOST1, LIST_UNITS, READ_UNIT1, "deliver uint32 0",
              "complete");
}

TEST_F(HidePathsTest, NumbersAndAccessesAreNotRead) {
    give("DeviceNumbers", Uint32(1));
    give("DeviceAccesses", String("rw"));
    hide();

    expectLog(LIST_UNITS, "deliver uint32 0", "complete");
}

TEST_F(HidePathsTest, AHostThatTheEngineRefusesEndsTheMethodAndEarlierOnesStayForbidden) {
    map(UNIT1, VOLUME1);
    failNext("deleteAssociation", 3, "no such initiator", 1);
    giveTexts("InitiatorPortIDs", {"iqn.host1", "iqn.host2"});
    giveTexts("LUNames", {"60A1"});

    EXPECT_EQ(engineError(), "no such initiator");

    expectLog(FIND_HOST1, HOST1_FOUND, FIND_HOST2, HOST2_FOUND, FIND_VOLUME1, VOLUME1_FOUND,
              FORBID_HOST1, FORBID_HOST2);
}

TEST_F(HidePathsTest, AUnitThatTheEngineKeepsEndsTheMethodAndEarlierOnesStayRemoved) {
    map(UNIT1, VOLUME1);
    map(UNIT2, VOLUME1);
    failNext("deleteObject", 6, "in use", 1);
    giveTexts("LUNames", {"60A1"});

    EXPECT_EQ(engineError(), "in use");

    expectLog(FIND_VOLUME1, VOLUME1_FOUND, LIST_UNITS, READ_UNIT1, DELETE_UNIT1, READ_UNIT2,
              DELETE_UNIT2);
}

TEST_F(HidePathsTest, AUnitThatCannotBeReadEndsTheMethod) {
    associate(TARGET, CLASSID_LOGICAL_UNIT, {UNIT1});
    giveTexts("LUNames", {"60A1"});

    EXPECT_EQ(engineError(), "no record Ovrin:0F000001");

    expectLog(FIND_VOLUME1, VOLUME1_FOUND, LIST_UNITS, READ_UNIT1);
}

} // namespace
