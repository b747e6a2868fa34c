#include "tests/providers/masking/ControllerConfigurationServiceTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string SERVICE_PATH =
    "//array1.example.com/root/snia:CIM_ControllerConfigurationService."
    "CreationClassName=\"CIM_ControllerConfigurationService\",Name=\"array1\","
    "SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"array1\"";

class ControllerConfigurationServiceTest : public ServiceTest {
protected:
    void enumerateInstances(const char* className) {
        provider.enumerateInstances(context, requestPath(className), false, false,
                                    CIMPropertyList(), instances);
    }

    void enumerateInstanceNames(const char* className) {
        provider.enumerateInstanceNames(context, requestPath(className), paths);
    }

    InstanceHandler instances;
    ObjectPathHandler paths;
};

TEST_F(ControllerConfigurationServiceTest, GetInstanceGivesTheServiceWhateverIsAskedFor) {
    for (const CIMObjectPath& path :
         {requestPath(SERVICE_CLASS), requestPath("CIM_StorageVolume", {{"DeviceID", "17"}})}) {
        clearLog();
        provider.getInstance(context, path, false, false, CIMPropertyList(), instances);
        EXPECT_THAT(log(), ElementsAre("processing", "deliver " + SERVICE_PATH, "complete"));
    }
}

TEST_F(ControllerConfigurationServiceTest, TheInstanceHasItsFourKeysInThisOrderAndNothingElse) {
    provider.getInstance(context, requestPath(SERVICE_CLASS), false, false, CIMPropertyList(),
                         instances);

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(text(instances.delivered[0].getClassName()), SERVICE_CLASS);
    EXPECT_EQ(instances.delivered[0].getQualifierCount(), 0u);
    EXPECT_THAT(properties(instances.delivered[0]),
                ElementsAre("SystemCreationClassName: string CIM_ComputerSystem [Key=TRUE]",
                            "SystemName: string array1 [Key=TRUE]",
                            "CreationClassName: string CIM_ControllerConfigurationService "
                            "[Key=TRUE]",
                            "Name: string array1 [Key=TRUE]"));
}

TEST_F(ControllerConfigurationServiceTest, FlagsAndPropertyListAreIgnored) {
    const CIMPropertyList nothing{Array<CIMName>()};
    provider.getInstance(context, requestPath(SERVICE_CLASS), true, true, nothing, instances);
    provider.enumerateInstances(context, requestPath(SERVICE_CLASS), true, true, nothing,
                                instances);

    ASSERT_EQ(instances.delivered.size(), 2u);
    for (const CIMInstance& instance : instances.delivered) {
        EXPECT_EQ(properties(instance).size(), 4u);
    }
}

TEST_F(ControllerConfigurationServiceTest, EnumerationsDeliverTheServiceForItsClassInAnyCase) {
    enumerateInstances("cim_controllerconfigurationservice");
    enumerateInstanceNames("CIM_CONTROLLERCONFIGURATIONSERVICE");

    EXPECT_THAT(log(), ElementsAre("processing", "deliver " + SERVICE_PATH, "complete",
                                   "processing", "deliver " + SERVICE_PATH, "complete"));
}

TEST_F(ControllerConfigurationServiceTest, EnumerationsOfAnotherClassCompleteEmpty) {
    enumerateInstances("CIM_Service");
    enumerateInstanceNames("CIM_Service");

    EXPECT_THAT(log(), ElementsAre("processing", "complete", "processing", "complete"));
}

TEST_F(ControllerConfigurationServiceTest, AllKeysOfThePathAreStrings) {
    enumerateInstanceNames(SERVICE_CLASS);

    ASSERT_EQ(paths.delivered.size(), 1u);
    const Array<CIMKeyBinding> keys = paths.delivered[0].getKeyBindings();
    ASSERT_EQ(keys.size(), 4u);
    for (Uint32 i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i].getType(), CIMKeyBinding::STRING);
    }
}

TEST_F(ControllerConfigurationServiceTest, TheInvocationIsPublishedWithAllItsArguments) {
    giveController();
    invoke("hidepaths");

    EXPECT_EQ(
        events(),
        (std::vector<Event>{
            {0, EMP_TYPE_METHOD_INVOKED, "ControllerConfigurationServiceProvider::invokeMethod()",
             "objectReference=//client.example.com/root/snia:"
             "CIM_ControllerConfigurationService, methodName=hidepaths",
             29, events().at(0).line, "invokeMethod", "ControllerConfigurationService.cpp"}}));
    EXPECT_EQ(EMP_TYPE_METHOD_INVOKED, 1);
}

TEST_F(ControllerConfigurationServiceTest, AnotherClassCompletesWithoutAReturnValue) {
    giveController();
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    invoke("ExposePaths", "CIM_StorageHardwareIDManagementService");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", "complete"));
}

TEST_F(ControllerConfigurationServiceTest, AnUnknownMethodOfAnotherClassIsNoError) {
    invoke("AttachDevice", "CIM_Service");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", "complete"));
}

TEST_F(ControllerConfigurationServiceTest, AnUnknownMethodIsRefusedWithItsText) {
    EXPECT_EQ(thrownBy<CIMNotSupportedException>([this] { invoke("AttachDevice"); }),
              "ControllerConfigurationService::invodeMethod");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing"));
}

TEST_F(ControllerConfigurationServiceTest, TheServicesClassIsComparedWithoutRegardToCase) {
    giveController();
    invoke("ExposePaths", "cim_controllerconfigurationservice");

    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0))));
}

TEST_F(ControllerConfigurationServiceTest, TheKeysOfTheServiceAreNotExamined) {
    giveController();
    provider.invokeMethod(context, requestPath(SERVICE_CLASS, {{"Name", "another array"}}),
                          CIMName("ExposePaths"), inParameters, results);

    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0))));
}

TEST_F(ControllerConfigurationServiceTest, MethodNamesAreComparedWithoutRegardToCase) {
    giveController();
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    invoke("EXPOSEpaths");
    invoke("hidePATHS");

    EXPECT_THAT(calls(), testing::IsSupersetOf({"createAssociation(0x0E000002, 0x0D000001)",
                                                "deleteAssociation(0x0E000002, 0x0D000001)"}));
}

TEST_F(ControllerConfigurationServiceTest, NoParameterIsDelivered) {
    giveController();
    invoke("ExposePaths");
    invoke("HidePaths");

    EXPECT_THAT(results.parameters, IsEmpty());
    EXPECT_EQ(results.returnValues.size(), 2u);
}

} // namespace
