#include "providers/masking/SCSIProtocolControllerProvider.h"

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Uint32 TARGET1 = 0x0E000001;
constexpr Uint32 TARGET2 = 0x0E000009;

const std::string CONTROLLER = "CIM_SCSIProtocolController";
const std::string TARGET1_PATH = objectText(CONTROLLER, "DeviceID", TARGET1);
const std::string TARGET2_PATH = objectText(CONTROLLER, "DeviceID", TARGET2);

const std::string GET = "trace SCSIProtocolControllerProvider::getInstance";
const std::string INSTANCES = "trace SCSIProtocolControllerProvider::enumerateInstances";
const std::string NAMES = "trace SCSIProtocolControllerProvider::enumerateInstanceNames";
const std::string LIST_TARGETS = "enumerateAssociatedObjects(0x03000000, 14)";

class SCSIProtocolControllerProviderTest : public ProviderTest<SCSIProtocolControllerProvider> {
protected:
    // Not in ascending order: the order is the engine's.
    void listBothTargets() { associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET2, TARGET1}); }

    void getInstance(const CIMObjectPath& path) {
        provider.getInstance(context, path, false, false, CIMPropertyList(), instances);
    }

    void enumerateInstances(const std::string& className) {
        provider.enumerateInstances(context, requestPath(className.c_str()), false, false,
                                    CIMPropertyList(), instances);
    }

    void enumerateInstanceNames(const std::string& className) {
        provider.enumerateInstanceNames(context, requestPath(className.c_str()), paths);
    }

    InstanceHandler instances;
    ObjectPathHandler paths;
};

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceDeliversWhatIsBuiltFromTheDeviceID) {
    getInstance(requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(TARGET1)}}));

    EXPECT_THAT(log(), ElementsAre(GET, "processing", "iSCSINodeInstance(false, all, 0x0E000001)",
                                   "deliver " + TARGET1_PATH, "complete"));
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstancePassesQualifierFlagAndPropertyListOn) {
    Array<CIMName> names;
    names.append(CIMName("ElementName"));
    provider.getInstance(
        context, requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(TARGET1)}}), true,
        false, CIMPropertyList(names), instances);

    EXPECT_THAT(calls(), ElementsAre("iSCSINodeInstance(true, [ElementName], 0x0E000001)"));
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceIgnoresTheClassOriginFlag) {
    provider.getInstance(
        context, requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(TARGET1)}}), false,
        true, CIMPropertyList(), instances);

    EXPECT_THAT(calls(), ElementsAre("iSCSINodeInstance(false, all, 0x0E000001)"));
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceFindsTheKeyWithoutRegardToCase) {
    getInstance(requestPath("CIM_SCSIProtocolController", {{"deviceid", keyText(TARGET1)}}));

    EXPECT_THAT(calls(), ElementsAre("iSCSINodeInstance(false, all, 0x0E000001)"));
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceExaminesNeitherClassNorOtherKeys) {
    getInstance(requestPath("CIM_StorageVolume", {{"CreationClassName", "CIM_Other"},
                                                  {"DeviceID", keyText(TARGET2)},
                                                  {"SystemName", "elsewhere"}}));

    EXPECT_THAT(calls(), ElementsAre("iSCSINodeInstance(false, all, 0x0E000009)"));
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceTakesAnyIdAndDoesNotAskTheEngineForIt) {
    getInstance(requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(0x0D00BEEF)}}));

    EXPECT_THAT(calls(), ElementsAre("iSCSINodeInstance(false, all, 0x0D00BEEF)"));
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceWithoutADeviceIDIsOutOfBounds) {
    for (const CIMObjectPath& path :
         {requestPath("CIM_SCSIProtocolController"),
          requestPath("CIM_SCSIProtocolController", {{"Name", keyText(TARGET1)}})}) {
        clearLog();
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] { getInstance(path); }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre(GET, "processing"));
    }
}

TEST_F(SCSIProtocolControllerProviderTest, GetInstanceOfATextThatIsNoKeyTextIsTheBuildersAffair) {
    getInstance(requestPath("CIM_SCSIProtocolController", {{"DeviceID", "seven"}}));

    EXPECT_THAT(calls(), ElementsAre("iSCSINodeInstance(false, all, 0xFFFFFFFF)"));
}

TEST_F(SCSIProtocolControllerProviderTest, AFailureToBuildTheInstancePasses) {
    failNext("iSCSINodeInstance", 7, "unplugged");

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] {
                  getInstance(
                      requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(TARGET1)}}));
              }),
              "unplugged");

    EXPECT_THAT(instances.delivered, IsEmpty());
    EXPECT_THAT(log(), ElementsAre(GET, "processing", "iSCSINodeInstance(false, all, 0x0E000001)"));
}

TEST_F(SCSIProtocolControllerProviderTest, EnumerateInstancesGivesEachTargetInTheEnginesOrder) {
    listBothTargets();
    enumerateInstances(CONTROLLER);

    EXPECT_THAT(log(),
                ElementsAre(INSTANCES, "processing", LIST_TARGETS,
                            "iSCSINodeInstance(false, all, 0x0E000009)", "deliver " + TARGET2_PATH,
                            "iSCSINodeInstance(false, all, 0x0E000001)", "deliver " + TARGET1_PATH,
                            "complete"));
}

TEST_F(SCSIProtocolControllerProviderTest, EnumerateInstancesPassesQualifierFlagAndPropertyListOn) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET1});
    provider.enumerateInstances(context, requestPath("CIM_SCSIProtocolController"), true, false,
                                CIMPropertyList(Array<CIMName>()), instances);

    EXPECT_THAT(calls(), ElementsAre(LIST_TARGETS, "iSCSINodeInstance(true, [], 0x0E000001)"));
}

TEST_F(SCSIProtocolControllerProviderTest, EnumerateInstanceNamesGivesEachTargetInTheEnginesOrder) {
    listBothTargets();
    enumerateInstanceNames(CONTROLLER);

    EXPECT_THAT(log(), ElementsAre(NAMES, "processing", LIST_TARGETS, "iSCSINodePath(0x0E000009)",
                                   "deliver " + TARGET2_PATH, "iSCSINodePath(0x0E000001)",
                                   "deliver " + TARGET1_PATH, "complete"));
}

TEST_F(SCSIProtocolControllerProviderTest, AnArrayWithoutTargetsHasNoControllers) {
    enumerateInstances(CONTROLLER);
    enumerateInstanceNames(CONTROLLER);

    EXPECT_THAT(log(), ElementsAre(INSTANCES, "processing", LIST_TARGETS, "complete", NAMES,
                                   "processing", LIST_TARGETS, "complete"));
}

TEST_F(SCSIProtocolControllerProviderTest, AnotherClassHasNoControllersHere) {
    listBothTargets();
    enumerateInstances("CIM_ProtocolController");
    enumerateInstanceNames("CIM_ProtocolController");

    EXPECT_THAT(log(),
                ElementsAre(INSTANCES, "processing", "complete", NAMES, "processing", "complete"));
}

TEST_F(SCSIProtocolControllerProviderTest, TheClassIsComparedWithoutRegardToCase) {
    listBothTargets();
    enumerateInstances("cim_scsiprotocolcontroller");
    enumerateInstanceNames("CIM_SCSIPROTOCOLCONTROLLER");

    EXPECT_EQ(instances.delivered.size(), 2u);
    EXPECT_EQ(paths.delivered.size(), 2u);
}

TEST_F(SCSIProtocolControllerProviderTest, EachPathGivenBackToGetInstanceIsTheSameController) {
    listBothTargets();
    enumerateInstanceNames(CONTROLLER);

    for (const CIMObjectPath& path : paths.delivered) {
        instances.delivered.clear();
        getInstance(path);
        ASSERT_EQ(instances.delivered.size(), 1u);
        EXPECT_TRUE(instances.delivered[0].getPath().identical(path));
    }
}

TEST_F(SCSIProtocolControllerProviderTest, AFailureToListPassesAfterProcessing) {
    failNext("enumerateAssociatedObjects", 9, "offline");
    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] { enumerateInstances(CONTROLLER); }),
              "offline");
    failNext("enumerateAssociatedObjects", 9, "offline");
    EXPECT_EQ(
        thrownBy<DRAVOperationFailedException>([this] { enumerateInstanceNames(CONTROLLER); }),
        "offline");

    EXPECT_THAT(log(), ElementsAre(INSTANCES, "processing", LIST_TARGETS, NAMES, "processing",
                                   LIST_TARGETS));
}

TEST_F(SCSIProtocolControllerProviderTest, WhatWasDeliveredBeforeAFailureStaysDelivered) {
    listBothTargets();
    failNext("iSCSINodePath", 9, "offline", 1);

    EXPECT_EQ(
        thrownBy<DRAVOperationFailedException>([this] { enumerateInstanceNames(CONTROLLER); }),
        "offline");

    EXPECT_THAT(log(), ElementsAre(NAMES, "processing", LIST_TARGETS, "iSCSINodePath(0x0E000009)",
                                   "deliver " + TARGET2_PATH, "iSCSINodePath(0x0E000001)"));
}

} // namespace
