// CIM_ProtocolControllerForUnit: enumerations and getInstance.

#include "tests/providers/masking/ProtocolControllerForUnitTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ProtocolControllerForUnitInstancesTest : public ProtocolControllerForUnitTest {
protected:
    void enumerateInstances(const char* className = UNIT_CLASS) {
        provider.enumerateInstances(context, requestPath(className), false, false, all, instances);
    }

    void enumerateInstanceNames(const char* className = UNIT_CLASS) {
        provider.enumerateInstanceNames(context, requestPath(className), paths);
    }

    void getInstance(const CIMObjectPath& path) {
        provider.getInstance(context, path, false, false, all, instances);
    }

    // getInstance of a path that names no unit fails so, before the engine is asked.
    template<class Expected>
    std::string failure(const CIMObjectPath& path) {
        clearLog();
        const std::string message = thrownBy<Expected>([&] { getInstance(path); });
        EXPECT_THAT(log(), ElementsAre("processing"));
        return message;
    }
};

TEST_F(ProtocolControllerForUnitInstancesTest,
       EnumerateInstancesBuildsEachUnitOfEachTargetVolumeFirst) {
    enumerateInstances();

    EXPECT_THAT(log(), ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000002)",
                                   "deliver " + unitText(TARGET2, VOLUME1), LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumePath(0x17000002)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME2), READ_UNIT1,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitInstancesTest,
       EnumerateInstanceNamesBuildsEachUnitOfEachTargetVolumeFirst) {
    enumerateInstanceNames();

    EXPECT_THAT(log(), ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000002)",
                                   "deliver " + unitText(TARGET2, VOLUME1), LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumePath(0x17000002)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME2), READ_UNIT1,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, AListedInstanceHasFourPropertiesTheVolumeFirst) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET2});
    enumerateInstances();

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(text(instances.delivered[0].getClassName()), UNIT_CLASS);
    EXPECT_EQ(instances.delivered[0].getQualifierCount(), 0u);
    EXPECT_THAT(
        properties(instances.delivered[0]),
        ElementsAre("Dependent: reference " + volumeText(VOLUME1) +
                        " of CIM_StorageVolume from CIM_ProtocolControllerForUnit [Key=TRUE]",
                    "Antecedent: reference " + controllerText(TARGET2) +
                        " of CIM_SCSIProtocolController from CIM_ProtocolControllerForUnit "
                        "[Key=TRUE]",
                    "DeviceNumber: uint32 9", "DeviceAccess: uint16 4"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, EachAccessCodeHasItsDeviceAccess) {
    enumerateInstances();

    std::vector<std::string> accesses;
    for (const CIMInstance& instance : instances.delivered) {
        accesses.push_back(properties(instance)[3]);
    }
    EXPECT_THAT(accesses, ElementsAre("DeviceAccess: uint16 4", "DeviceAccess: uint16 3",
                                      "DeviceAccess: uint16 2"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, KeysOfThePathAreTwoReferences) {
    enumerateInstanceNames();

    ASSERT_EQ(paths.delivered.size(), 3u);
    const Array<CIMKeyBinding> keys = paths.delivered[0].getKeyBindings();
    ASSERT_EQ(keys.size(), 2u);
    for (Uint32 i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i].getType(), CIMKeyBinding::REFERENCE);
    }
}

TEST_F(ProtocolControllerForUnitInstancesTest, EnumerationsIgnoreTheClassAskedFor) {
    enumerateInstances("CIM_Dependency");
    enumerateInstanceNames("CIM_Dependency");

    EXPECT_EQ(instances.delivered.size(), 3u);
    EXPECT_EQ(paths.delivered.size(), 3u);
}

TEST_F(ProtocolControllerForUnitInstancesTest, FlagsAndPropertyListDoNotChangeAnInstance) {
    const CIMPropertyList nothing{Array<CIMName>()};
    provider.enumerateInstances(context, requestPath(UNIT_CLASS), true, true, nothing, instances);
    provider.getInstance(context, unitPath(controllerPath(TARGET1), volumePath(VOLUME1)), true,
                         true, nothing, instances);

    ASSERT_EQ(instances.delivered.size(), 4u);
    for (const CIMInstance& instance : instances.delivered) {
        EXPECT_EQ(properties(instance).size(), 4u);
    }
}

TEST_F(ProtocolControllerForUnitInstancesTest, AUnitWithoutItsVolumeIsListedLikeAnyOther) {
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET1});
    loseVolume2();
    enumerateInstances();
    enumerateInstanceNames();

    EXPECT_THAT(traces(), IsEmpty());
    ASSERT_EQ(instances.delivered.size(), 2u);
    EXPECT_EQ(text(instances.delivered[0].getPath()), unitText(TARGET1, 0));
    ASSERT_EQ(paths.delivered.size(), 2u);
    EXPECT_EQ(text(paths.delivered[0]), unitText(TARGET1, 0));
}

TEST_F(ProtocolControllerForUnitInstancesTest,
       TargetsWithoutUnitsAndAnArrayWithoutTargetsHaveNone) {
    associate(TARGET1, CLASSID_LOGICAL_UNIT, {});
    associate(TARGET2, CLASSID_LOGICAL_UNIT, {});
    enumerateInstances();
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {});
    enumerateInstanceNames();

    EXPECT_THAT(log(), ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, LIST_UNITS1, "complete",
                                   "processing", LIST_TARGETS, "complete"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, AFailureInTheMiddleLeavesWhatWasDelivered) {
    failNext("getObject", 8, "gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] { enumerateInstanceNames(); }), "gone");

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                            "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000002)",
                            "deliver " + unitText(TARGET2, VOLUME1), LIST_UNITS1, READ_UNIT2));
}

TEST_F(ProtocolControllerForUnitInstancesTest,
       GetInstanceReadsAllUnitsAndBuildsTheControllerFirst) {
    getInstance(unitPath(controllerPath(TARGET1), volumePath(VOLUME2)));

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_UNITS1, READ_UNIT2, "iSCSINodePath(0x0E000001)",
                            "StorageVolumePath(0x17000002)",
                            "deliver " + unitText(TARGET1, VOLUME2), READ_UNIT1, "complete"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, ThatInstanceHasFourPropertiesTheControllerFirst) {
    getInstance(unitPath(controllerPath(TARGET1), volumePath(VOLUME1)));

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(text(instances.delivered[0].getClassName()), UNIT_CLASS);
    EXPECT_THAT(
        properties(instances.delivered[0]),
        ElementsAre("Antecedent: reference " + controllerText(TARGET1) +
                        " of CIM_SCSIProtocolController from CIM_ProtocolControllerForUnit "
                        "[Key=TRUE]",
                    "Dependent: reference " + volumeText(VOLUME1) +
                        " of CIM_StorageVolume from CIM_ProtocolControllerForUnit [Key=TRUE]",
                    "DeviceNumber: uint32 7", "DeviceAccess: uint16 2"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceTakesTheReferenceClassesFromTheRequest) {
    getInstance(unitPath(requestPath("CIM_ProtocolController", {{"DeviceID", keyText(TARGET1)}}),
                         requestPath("CIM_LogicalDevice", {{"DeviceID", keyText(VOLUME1)}})));

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_THAT(
        properties(instances.delivered[0]),
        ElementsAre("Antecedent: reference " + controllerText(TARGET1) +
                        " of CIM_ProtocolController from CIM_ProtocolControllerForUnit [Key=TRUE]",
                    "Dependent: reference " + volumeText(VOLUME1) +
                        " of CIM_LogicalDevice from CIM_ProtocolControllerForUnit [Key=TRUE]",
                    "DeviceNumber: uint32 7", "DeviceAccess: uint16 2"));
}

TEST_F(ProtocolControllerForUnitInstancesTest,
       GetInstanceOfAVolumeThatIsMappedTwiceGivesBothUnits) {
    addRecord(UNIT2, unit(TARGET1, 8, 1, VOLUME1));
    getInstance(unitPath(controllerPath(TARGET1), volumePath(VOLUME1)));

    ASSERT_EQ(instances.delivered.size(), 2u);
    EXPECT_EQ(properties(instances.delivered[0])[2], "DeviceNumber: uint32 8");
    EXPECT_EQ(properties(instances.delivered[1])[2], "DeviceNumber: uint32 7");
}

TEST_F(ProtocolControllerForUnitInstancesTest,
       GetInstanceOfAVolumeThatIsNotMappedThereGivesNothing) {
    getInstance(unitPath(controllerPath(TARGET2), volumePath(VOLUME2)));

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS2, READ_UNIT3, "complete"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceOfAControllerWithoutUnitsGivesNothing) {
    getInstance(unitPath(controllerPath(0x0E000077), volumePath(VOLUME2)));

    EXPECT_THAT(
        log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0E000077, 15)", "complete"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceFindsTheUnitOfAVolumeThatIsGoneById0) {
    loseVolume2();
    getInstance(unitPath(controllerPath(TARGET1), volumePath(0)));

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(properties(instances.delivered[0])[2], "DeviceNumber: uint32 8");
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceComparesKeyNamesWithoutRegardToCase) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(
        CIMName("ANTECEDENT"),
        CIMValue(requestPath("CIM_SCSIProtocolController", {{"deviceid", keyText(TARGET1)}}))));
    keys.append(CIMKeyBinding(CIMName("dependent"), CIMValue(volumePath(VOLUME1))));
    getInstance(CIMObjectPath("", CIMNamespaceName("root/snia"), UNIT_CLASS, keys));

    EXPECT_EQ(instances.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceReadsReferencesThatAreGivenAsTexts) {
    getInstance(requestPath(UNIT_CLASS, {{"Antecedent", text(controllerPath(TARGET1))},
                                         {"Dependent", text(volumePath(VOLUME1))}}));

    EXPECT_EQ(instances.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceIgnoresClassHostAndOtherKeys) {
    Array<CIMKeyBinding> keys =
        unitPath(controllerPath(TARGET1), volumePath(VOLUME1)).getKeyBindings();
    keys.append(CIMKeyBinding(CIMName("A"), CIMValue(Uint32(1))));
    getInstance(CIMObjectPath("elsewhere", CIMNamespaceName("root/other"), "CIM_Other", keys));

    EXPECT_EQ(instances.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceFindsEachDeviceIDAmongOtherKeys) {
    getInstance(
        unitPath(requestPath("CIM_SCSIProtocolController",
                             {{"CreationClassName", "CIM_SCSIProtocolController"},
                              {"DeviceID", keyText(TARGET1)},
                              {"SystemName", "array1"}}),
                 requestPath("CIM_StorageVolume", {{"CreationClassName", "CIM_StorageVolume"},
                                                   {"DeviceID", keyText(VOLUME1)},
                                                   {"SystemName", "array1"}})));

    EXPECT_EQ(instances.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceWithoutAnEndIsOutOfBounds) {
    const std::string controller = text(controllerPath(TARGET1));
    const std::string volume = text(volumePath(VOLUME1));

    for (const CIMObjectPath& path :
         {requestPath(UNIT_CLASS), requestPath(UNIT_CLASS, {{"Antecedent", controller}}),
          requestPath(UNIT_CLASS, {{"Dependent", volume}})}) {
        EXPECT_EQ(failure<IndexOutOfBoundsException>(path), "index out of bounds");
    }
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceOfAnEndWithoutADeviceIDIsOutOfBounds) {
    for (const CIMObjectPath& path :
         {unitPath(requestPath("CIM_SCSIProtocolController", {{"Name", "x"}}), volumePath(VOLUME1)),
          unitPath(controllerPath(TARGET1), requestPath("CIM_StorageVolume"))}) {
        EXPECT_EQ(failure<IndexOutOfBoundsException>(path), "index out of bounds");
    }
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceOfAnEndThatIsNoPathIsMalformed) {
    const std::string controller = text(controllerPath(TARGET1));
    const std::string volume = text(volumePath(VOLUME1));

    for (const CIMObjectPath& path :
         {requestPath(UNIT_CLASS, {{"Antecedent", "not a path"}, {"Dependent", volume}}),
          requestPath(UNIT_CLASS, {{"Antecedent", controller}, {"Dependent", ""}})}) {
        EXPECT_THAT(failure<MalformedObjectNameException>(path),
                    testing::StartsWith("malformed object name"));
    }
}

TEST_F(ProtocolControllerForUnitInstancesTest,
       GetInstanceReadsTheControllersPathBeforeItLooksForTheVolumes) {
    EXPECT_THAT(failure<MalformedObjectNameException>(
                    requestPath(UNIT_CLASS, {{"Antecedent", "not a path"}})),
                testing::StartsWith("malformed object name"));
}

TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceReadsBothPathsBeforeTheirIds) {
    const std::string withoutDeviceID = text(requestPath("CIM_SCSIProtocolController"));
    EXPECT_THAT(failure<MalformedObjectNameException>(requestPath(
                    UNIT_CLASS, {{"Antecedent", withoutDeviceID}, {"Dependent", "not a path"}})),
                testing::StartsWith("malformed object name"));
}

// In particular no unit whose volume is gone.
TEST_F(ProtocolControllerForUnitInstancesTest, GetInstanceOfATextThatIsNoKeyTextGivesNothing) {
    loseVolume2();
    getInstance(unitPath(controllerPath(TARGET1),
                         requestPath("CIM_StorageVolume", {{"DeviceID", "60A1"}})));
    getInstance(
        unitPath(requestPath("CIM_SCSIProtocolController", {{"DeviceID", "one"}}), volumePath(0)));

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2, READ_UNIT1, "complete",
                                   "processing", "enumerateAssociatedObjects(0xFFFFFFFF, 15)",
                                   "complete"));
}

} // namespace
