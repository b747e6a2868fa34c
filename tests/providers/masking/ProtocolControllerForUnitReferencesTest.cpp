// CIM_ProtocolControllerForUnit: references and referenceNames.

#include "tests/providers/masking/ProtocolControllerForUnitTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ProtocolControllerForUnitReferencesTest : public ProtocolControllerForUnitTest {
protected:
    void references(const CIMObjectPath& source, const char* role) {
        provider.references(context, source, UNIT_CLASS, role, false, false, all, objects);
    }

    void referenceNames(const CIMObjectPath& source, const char* role) {
        provider.referenceNames(context, source, UNIT_CLASS, role, paths);
    }

    void both(const CIMObjectPath& source, const char* role) {
        references(source, role);
        referenceNames(source, role);
    }
};

TEST_F(ProtocolControllerForUnitReferencesTest, ReferencesOfAControllerAreItsUnits) {
    references(controllerPath(TARGET1), "Antecedent");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumePath(0x17000002)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME2), READ_UNIT1,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitReferencesTest, ReferenceNamesOfAControllerAreThePathsOfItsUnits) {
    referenceNames(controllerPath(TARGET1), "Antecedent");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumePath(0x17000002)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME2), READ_UNIT1,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitReferencesTest, ReferencesOfAVolumeAreItsUnitsOverAllTargets) {
    references(volumePath(VOLUME1), "Dependent");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000002)",
                                   "deliver " + unitText(TARGET2, VOLUME1), LIST_UNITS1, READ_UNIT2,
                                   READ_UNIT1, "StorageVolumePath(0x17000001)",
                                   "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitReferencesTest,
       ReferenceNamesOfAVolumeAreThePathsOfItsUnitsOverAllTargets) {
    referenceNames(volumePath(VOLUME1), "Dependent");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_TARGETS, LIST_UNITS2, READ_UNIT3,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000002)",
                                   "deliver " + unitText(TARGET2, VOLUME1), LIST_UNITS1, READ_UNIT2,
                                   READ_UNIT1, "StorageVolumePath(0x17000001)",
                                   "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME1), "complete"));
}

TEST_F(ProtocolControllerForUnitReferencesTest, AReferenceIsTheFullInstanceTheVolumeFirst) {
    references(volumePath(VOLUME2), "Dependent");

    ASSERT_EQ(objects.delivered.size(), 1u);
    ASSERT_TRUE(objects.delivered[0].isInstance());
    EXPECT_THAT(
        properties(CIMInstance(objects.delivered[0])),
        ElementsAre("Dependent: reference " + volumeText(VOLUME2) +
                        " of CIM_StorageVolume from CIM_ProtocolControllerForUnit [Key=TRUE]",
                    "Antecedent: reference " + controllerText(TARGET1) +
                        " of CIM_SCSIProtocolController from CIM_ProtocolControllerForUnit "
                        "[Key=TRUE]",
                    "DeviceNumber: uint32 8", "DeviceAccess: uint16 3"));
}

TEST_F(ProtocolControllerForUnitReferencesTest, FlagsAndPropertyListDoNotChangeTheInstance) {
    provider.references(context, volumePath(VOLUME2), UNIT_CLASS, "Dependent", true, true,
                        CIMPropertyList(Array<CIMName>()), objects);

    ASSERT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(properties(CIMInstance(objects.delivered[0])).size(), 4u);
}

TEST_F(ProtocolControllerForUnitReferencesTest,
       FromAPlainProtocolControllerThereAreReferencesButNoNames) {
    const CIMObjectPath source =
        requestPath("CIM_ProtocolController", {{"DeviceID", keyText(TARGET2)}});
    references(source, "Antecedent");
    referenceNames(source, "Antecedent");

    EXPECT_THAT(log(),
                ElementsAre("processing", LIST_UNITS2, READ_UNIT3, "StorageVolumePath(0x17000001)",
                            "iSCSINodePath(0x0E000002)", "deliver " + unitText(TARGET2, VOLUME1),
                            "complete", "processing", "complete"));
}

TEST_F(ProtocolControllerForUnitReferencesTest, ClassesAndRolesAreComparedWithoutRegardToCase) {
    both(requestPath("cim_scsiprotocolcontroller", {{"DeviceID", keyText(TARGET2)}}), "antecedent");
    both(requestPath("CIM_STORAGEVOLUME", {{"DeviceID", keyText(VOLUME2)}}), "DEPENDENT");

    EXPECT_EQ(objects.delivered.size(), 2u);
    EXPECT_EQ(paths.delivered.size(), 2u);
}

TEST_F(ProtocolControllerForUnitReferencesTest, TheResultClassIsNotConsulted) {
    provider.references(context, volumePath(VOLUME2), "CIM_Other", "Dependent", false, false, all,
                        objects);
    provider.referenceNames(context, controllerPath(TARGET2), CIMName(), "Antecedent", paths);

    EXPECT_EQ(objects.delivered.size(), 1u);
    EXPECT_EQ(paths.delivered.size(), 1u);
}

TEST_F(ProtocolControllerForUnitReferencesTest, AVolumeThatIsMappedTwiceUnderATargetHasBothUnits) {
    addRecord(UNIT2, unit(TARGET1, 8, 1, VOLUME1));
    both(volumePath(VOLUME1), "Dependent");

    EXPECT_EQ(objects.delivered.size(), 3u);
    EXPECT_EQ(paths.delivered.size(), 3u);
}

TEST_F(ProtocolControllerForUnitReferencesTest, AUnitWithoutItsVolumeIsDeliveredLikeAnyOther) {
    loseVolume2();
    both(controllerPath(TARGET1), "Antecedent");
    both(volumePath(0), "Dependent");

    EXPECT_THAT(traces(), IsEmpty());
    ASSERT_EQ(objects.delivered.size(), 3u);
    ASSERT_EQ(paths.delivered.size(), 3u);
    for (const size_t i : {size_t(0), size_t(2)}) {
        EXPECT_EQ(text(objects.delivered[i].getPath()), unitText(TARGET1, 0));
        EXPECT_EQ(text(paths.delivered[i]), unitText(TARGET1, 0));
    }
}

struct Request {
    const char* source;
    const char* role;
    const char* name;
};

class NoReferencesTest : public ProtocolControllerForUnitReferencesTest,
                         public testing::WithParamInterface<Request> {};

TEST_P(NoReferencesTest, GivesNothingAndTheEngineIsNotAsked) {
    both(requestPath(GetParam().source, {{"DeviceID", keyText(TARGET1)}}), GetParam().role);

    EXPECT_THAT(log(), ElementsAre("processing", "complete", "processing", "complete"));
}

const Request REQUESTS[] = {
    {"CIM_SCSIProtocolController", "", "ControllerWithoutARole"},
    {"CIM_ProtocolController", "", "PlainControllerWithoutARole"},
    {"CIM_StorageVolume", "", "VolumeWithoutARole"},
    {"CIM_SCSIProtocolController", "Dependent", "ControllerInTheVolumesRole"},
    {"CIM_StorageVolume", "Antecedent", "VolumeInTheControllersRole"},
    {"CIM_StorageVolume", "Member", "UnknownRole"},
    {"CIM_LogicalDevice", "Dependent", "AnotherClass"},
};

INSTANTIATE_TEST_SUITE_P(Requests, NoReferencesTest, testing::ValuesIn(REQUESTS),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ProtocolControllerForUnitReferencesTest, ASourceWithoutUnitsHasNone) {
    both(controllerPath(0x0E000077), "Antecedent");
    both(volumePath(0x17000077), "Dependent");

    EXPECT_THAT(objects.delivered, IsEmpty());
    EXPECT_THAT(paths.delivered, IsEmpty());
    EXPECT_EQ(log().back(), "complete");
}

TEST_F(ProtocolControllerForUnitReferencesTest,
       ASourceWithoutADeviceIDIsOutOfBoundsWhateverItsRole) {
    for (const char* role : {"Antecedent", "Dependent", ""}) {
        clearLog();
        const CIMObjectPath source = requestPath("CIM_SCSIProtocolController");
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] { references(source, role); }),
                  "index out of bounds");
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([&] { referenceNames(source, role); }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre("processing", "processing"));
    }
}

TEST_F(ProtocolControllerForUnitReferencesTest, AFailureInTheMiddleLeavesWhatWasDelivered) {
    failNext("iSCSINodePath", 8, "gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { referenceNames(controllerPath(TARGET1), "Antecedent"); }),
              "gone");

    EXPECT_THAT(log(), ElementsAre("processing", LIST_UNITS1, READ_UNIT2,
                                   "StorageVolumePath(0x17000002)", "iSCSINodePath(0x0E000001)",
                                   "deliver " + unitText(TARGET1, VOLUME2), READ_UNIT1,
                                   "StorageVolumePath(0x17000001)", "iSCSINodePath(0x0E000001)"));
}

} // namespace
