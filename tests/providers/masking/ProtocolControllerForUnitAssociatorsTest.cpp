// CIM_ProtocolControllerForUnit: associators and associatorNames.

#include "tests/providers/masking/ProtocolControllerForUnitTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

// In place of DRAVVolume's destructors, by the linker's --wrap: they write into the log.
extern "C" {
void __real__ZN7Pegasus10DRAVVolumeD1Ev(DRAVVolume* volume);

void __wrap__ZN7Pegasus10DRAVVolumeD1Ev(DRAVVolume* volume) {
    __real__ZN7Pegasus10DRAVVolumeD1Ev(volume);
    note(Entry::Call, "DRAVVolume deleted");
}

// A compiler may call this one instead.
void __wrap__ZN7Pegasus10DRAVVolumeD2Ev(DRAVVolume* volume) {
    __wrap__ZN7Pegasus10DRAVVolumeD1Ev(volume);
}
}

namespace {

const CIMName ANY_CLASS;

class ProtocolControllerForUnitAssociatorsTest : public ProtocolControllerForUnitTest {
protected:
    void associators(const CIMObjectPath& source, const CIMName& resultClass) {
        provider.associators(context, source, UNIT_CLASS, resultClass, "", "", false, false, all,
                             objects);
    }

    void associatorNames(const CIMObjectPath& source, const CIMName& resultClass) {
        provider.associatorNames(context, source, UNIT_CLASS, resultClass, "", "", paths);
    }

    void both(const CIMObjectPath& source, const CIMName& resultClass) {
        associators(source, resultClass);
        associatorNames(source, resultClass);
    }

    static CIMObjectPath sourceOf(const char* className, Uint32 id) {
        return requestPath(className, {{"DeviceID", keyText(id)}});
    }
};

TEST_F(ProtocolControllerForUnitAssociatorsTest, AssociatorsOfAControllerAreItsVolumes) {
    associators(controllerPath(TARGET1), "CIM_StorageVolume");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumeInstance(false, all, 0x17000002)",
                                   "deliver " + volumeText(VOLUME2), READ_UNIT1,
                                   "StorageVolumeInstance(false, all, 0x17000001)",
                                   "deliver " + volumeText(VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest,
       AssociatorNamesOfAControllerAreThePathsOfItsVolumes) {
    associatorNames(controllerPath(TARGET1), "CIM_StorageVolume");

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_UNITS1, READ_UNIT2, "StorageVolumePath(0x17000002)",
                            "deliver " + volumeText(VOLUME2), READ_UNIT1,
                            "StorageVolumePath(0x17000001)", "deliver " + volumeText(VOLUME1),
                            "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, AssociatorsOfAVolumeAreItsControllers) {
    associators(volumePath(VOLUME1), "CIM_SCSIProtocolController");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                                   "iSCSINodeInstance(false, all, 0x0E000002)",
                                   "deliver " + controllerText(TARGET2), LIST_UNITS1, READ_UNIT2,
                                   READ_UNIT1, "iSCSINodeInstance(false, all, 0x0E000001)",
                                   "deliver " + controllerText(TARGET1), "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest,
       AssociatorNamesOfAVolumeAreThePathsOfItsControllers) {
    associatorNames(volumePath(VOLUME1), "CIM_SCSIProtocolController");

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                            "iSCSINodePath(0x0E000002)", "deliver " + controllerText(TARGET2),
                            LIST_UNITS1, READ_UNIT2, READ_UNIT1, "iSCSINodePath(0x0E000001)",
                            "deliver " + controllerText(TARGET1), "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, AVolumeThatIsMappedTwiceUnderATargetGivesItTwice) {
    addRecord(UNIT2, unit(TARGET1, 8, 1, VOLUME1));
    both(volumePath(VOLUME1), "CIM_SCSIProtocolController");

    const std::vector<std::string> expected = {controllerText(TARGET2), controllerText(TARGET1),
                                               controllerText(TARGET1)};
    ASSERT_EQ(objects.delivered.size(), 3u);
    ASSERT_EQ(paths.delivered.size(), 3u);
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(text(objects.delivered[i].getPath()), expected[i]);
        EXPECT_EQ(text(paths.delivered[i]), expected[i]);
    }
}

// The record that stands for the volume lives until its instance is delivered.
TEST_F(ProtocolControllerForUnitAssociatorsTest,
       AControllersVolumeThatIsGoneIsBuiltFromWhatTheUnitKnows) {
    loseVolume2();
    associators(controllerPath(TARGET1), "CIM_StorageVolume");

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_UNITS1, READ_UNIT2,
                            "trace PCFU: Zombie Volume Name ='60A2'",
                            "StorageVolumeInstance(false, all, DRAVVolume{name=\"60A2\", state=3, "
                            "elementName=\"\", size=0})",
                            "deliver " + volumeText(0), "DRAVVolume deleted", READ_UNIT1,
                            "StorageVolumeInstance(false, all, 0x17000001)",
                            "deliver " + volumeText(VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, ThePathOfAVolumeThatIsGoneIsBuiltFromId0) {
    loseVolume2();
    associatorNames(controllerPath(TARGET1), "CIM_StorageVolume");

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_UNITS1, READ_UNIT2, "StorageVolumePath(0x00000000)",
                            "deliver " + volumeText(0), READ_UNIT1, "StorageVolumePath(0x17000001)",
                            "deliver " + volumeText(VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest,
       FromId0TheControllersOfVolumesThatAreGoneAreFound) {
    loseVolume2();
    both(volumePath(0), "CIM_SCSIProtocolController");

    EXPECT_THAT(traces(), IsEmpty());
    ASSERT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(text(objects.delivered[0].getPath()), controllerText(TARGET1));
    EXPECT_EQ(paths.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitAssociatorsTest,
       QualifierFlagAndPropertyListArePassedToTheBuilders) {
    loseVolume2();
    Array<CIMName> names;
    names.append(CIMName("Name"));
    const CIMPropertyList list(names);
    provider.associators(context, controllerPath(TARGET1), UNIT_CLASS, "CIM_StorageVolume", "", "",
                         true, false, list, objects);
    provider.associators(context, volumePath(VOLUME1), UNIT_CLASS, "CIM_SCSIProtocolController", "",
                         "", true, false, list, objects);

    EXPECT_THAT(calls(),
                testing::IsSupersetOf({"StorageVolumeInstance(true, [Name], DRAVVolume{name="
                                       "\"60A2\", state=3, elementName=\"\", size=0})",
                                       "StorageVolumeInstance(true, [Name], 0x17000001)",
                                       "iSCSINodeInstance(true, [Name], 0x0E000001)"}));
}

struct Classes {
    const char* source;
    const char* result;
};

std::string testName(const testing::TestParamInfo<Classes>& row) {
    const std::string result = row.param.result;
    return std::string(row.param.source).substr(4) + "To" +
           (result.empty() ? "Nothing" : result.substr(4));
}

class ClassesTest : public ProtocolControllerForUnitAssociatorsTest,
                    public testing::WithParamInterface<Classes> {};

const Classes FROM_CONTROLLERS[] = {
    {"CIM_SCSIProtocolController", "CIM_StorageVolume"},
    {"CIM_SCSIProtocolController", "CIM_LogicalDevice"},
    {"CIM_ProtocolController", "CIM_StorageVolume"},
    {"CIM_ProtocolController", "CIM_LogicalDevice"},
    {"cim_protocolcontroller", "cim_logicaldevice"},
};

class FromControllersTest : public ClassesTest {};

TEST_P(FromControllersTest, GivesTheVolumes) {
    both(sourceOf(GetParam().source, TARGET1), GetParam().result);

    ASSERT_EQ(objects.delivered.size(), 2u);
    EXPECT_EQ(text(objects.delivered[0].getClassName()), "CIM_StorageVolume");
    ASSERT_EQ(paths.delivered.size(), 2u);
    EXPECT_EQ(text(paths.delivered[0].getClassName()), "CIM_StorageVolume");
}

INSTANTIATE_TEST_SUITE_P(Classes, FromControllersTest, testing::ValuesIn(FROM_CONTROLLERS),
                         testName);

const Classes FROM_VOLUMES[] = {
    {"CIM_StorageVolume", "CIM_SCSIProtocolController"},
    {"CIM_StorageVolume", "CIM_ProtocolController"},
    {"cim_storagevolume", "cim_scsiprotocolcontroller"},
};

class FromVolumesTest : public ClassesTest {};

TEST_P(FromVolumesTest, GivesTheControllers) {
    both(sourceOf(GetParam().source, VOLUME2), GetParam().result);

    ASSERT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(text(objects.delivered[0].getClassName()), "CIM_SCSIProtocolController");
    ASSERT_EQ(paths.delivered.size(), 1u);
    EXPECT_EQ(text(paths.delivered[0].getClassName()), "CIM_SCSIProtocolController");
}

INSTANTIATE_TEST_SUITE_P(Classes, FromVolumesTest, testing::ValuesIn(FROM_VOLUMES), testName);

const Classes UNSERVED[] = {
    {"CIM_SCSIProtocolController", ""},
    {"CIM_SCSIProtocolController", "CIM_SCSIProtocolController"},
    {"CIM_SCSIProtocolController", "CIM_ProtocolController"},
    {"CIM_SCSIProtocolController", "CIM_StorageExtent"},
    {"CIM_ProtocolController", "CIM_ManagedElement"},
    {"CIM_StorageVolume", ""},
    {"CIM_StorageVolume", "CIM_StorageVolume"},
    {"CIM_StorageVolume", "CIM_LogicalDevice"},
    {"CIM_StorageVolume", "CIM_ManagedElement"},
    {"CIM_LogicalDevice", "CIM_SCSIProtocolController"},
    {"CIM_StorageHardwareID", "CIM_StorageVolume"},
};

class UnservedClassesTest : public ClassesTest {};

TEST_P(UnservedClassesTest, GivesNothingAndTheEngineIsNotAsked) {
    const std::string result = GetParam().result;
    both(sourceOf(GetParam().source, TARGET1),
         result.empty() ? ANY_CLASS : CIMName(result.c_str()));

    EXPECT_THAT(log(), ElementsAre("processing", "complete", "processing", "complete"));
}

INSTANTIATE_TEST_SUITE_P(Classes, UnservedClassesTest, testing::ValuesIn(UNSERVED), testName);

TEST_F(ProtocolControllerForUnitAssociatorsTest, AssociationClassAndRolesAreNotConsulted) {
    provider.associators(context, controllerPath(TARGET1), "CIM_Dependency", "CIM_StorageVolume",
                         "Dependent", "Nonsense", false, false, all, objects);
    provider.associatorNames(context, volumePath(VOLUME1), ANY_CLASS, "CIM_SCSIProtocolController",
                             "Antecedent", "Nonsense", paths);

    EXPECT_EQ(objects.delivered.size(), 2u);
    EXPECT_EQ(paths.delivered.size(), 2u);
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, AControllerWithoutUnitsHasNoVolumes) {
    both(controllerPath(0x0E000077), "CIM_StorageVolume");

    EXPECT_THAT(log(), ElementsAre("processing", "enumerateAssociatedObjects(0x0E000077, 15)",
                                   "complete", "processing",
                                   "enumerateAssociatedObjects(0x0E000077, 15)", "complete"));
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, AVolumeThatIsNotMappedHasNoControllers) {
    both(volumePath(0x17000077), "CIM_SCSIProtocolController");

    EXPECT_THAT(objects.delivered, IsEmpty());
    EXPECT_THAT(paths.delivered, IsEmpty());
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(ProtocolControllerForUnitAssociatorsTest,
       ASourceWithoutADeviceIDIsOutOfBoundsWhateverItsClass) {
    for (const char* className : {"CIM_SCSIProtocolController", "CIM_StorageVolume", "CIM_Other"}) {
        clearLog();
        const CIMObjectPath source = requestPath(className, {{"Name", keyText(TARGET1)}});
        EXPECT_EQ(
            thrownBy<IndexOutOfBoundsException>([&] { associators(source, "CIM_StorageVolume"); }),
            "index out of bounds");
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                      [&] { associatorNames(source, "CIM_SCSIProtocolController"); }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre("processing", "processing"));
    }
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, FromATextThatIsNoKeyTextNothingIsFound) {
    loseVolume2();
    both(requestPath("CIM_StorageVolume", {{"DeviceID", "60A1"}}), "CIM_ProtocolController");
    both(requestPath("CIM_SCSIProtocolController", {{"DeviceID", "one"}}), "CIM_StorageVolume");

    EXPECT_THAT(objects.delivered, IsEmpty());
    EXPECT_THAT(paths.delivered, IsEmpty());
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, TheDeviceIDIsFoundWithoutRegardToCase) {
    both(requestPath("CIM_StorageVolume", {{"deviceid", keyText(VOLUME2)}}),
         "CIM_SCSIProtocolController");

    EXPECT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(paths.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitAssociatorsTest, AFailureInTheMiddleLeavesWhatWasDelivered) {
    failNext("getObject", 8, "gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { associators(controllerPath(TARGET1), "CIM_StorageVolume"); }),
              "gone");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumeInstance(false, all, 0x17000002)",
                                   "deliver " + volumeText(VOLUME2), READ_UNIT1));
}

} // namespace
