#include "providers/identity/StorageHardwareIDManagementService.h"

#include <functional>
#include <stdexcept>

#include "providers/identity/StorageHardwareIDProvider.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string SERVICE_CLASS = "CIM_StorageHardwareIDManagementService";
const std::string SERVICE_PATH = "//array1.example.com/root/snia:" + SERVICE_CLASS +
                                 ".CreationClassName=\"" + SERVICE_CLASS +
                                 "\",Name=\"array1\",SystemCreationClassName=\"CIM_ComputerSystem\""
                                 ",SystemName=\"array1\"";
const std::string TRACE = "StorageHardwareIDManagementServiceProvider::invokeMethod";
const std::string EVENT_ENTRY = "event " + TRACE + "()";
const std::string TRACE_ENTRY = "trace " + TRACE;

constexpr Uint32 NEW_HOST = 0x0D000042;
const std::string NEW_HOST_PATH = objectText("CIM_StorageHardwareID", "InstanceID", NEW_HOST);

class StorageHardwareIDManagementServiceTest
    : public ProviderTest<StorageHardwareIDManagementServiceProvider> {
protected:
    StorageHardwareIDManagementServiceTest() { setNextId(NEW_HOST); }

    void give(const char* name, const CIMValue& value) {
        inParameters.append(CIMParamValue(name, value));
    }

    void invoke(const char* method, const char* className = SERVICE_CLASS.c_str(),
                const char* nameSpace = "root/snia") {
        const CIMObjectPath service("client.example.com", CIMNamespaceName(nameSpace), className);
        provider.invokeMethod(context, service, method, inParameters, results);
    }

    Array<CIMParamValue> inParameters;
    MethodResultHandler results;
    InstanceHandler instances;
    ObjectPathHandler paths;
};

TEST_F(StorageHardwareIDManagementServiceTest, GetInstanceGivesTheServiceWhateverIsAskedFor) {
    provider.getInstance(context, requestPath("CIM_StorageVolume", {{"DeviceID", "17"}}), false,
                         false, CIMPropertyList(), instances);

    EXPECT_THAT(log(), ElementsAre("processing", "deliver " + SERVICE_PATH, "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, TheInstanceHasItsFourKeysInThisOrder) {
    provider.getInstance(context, requestPath(SERVICE_CLASS.c_str()), false, false,
                         CIMPropertyList(), instances);

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(text(instances.delivered[0].getClassName()), SERVICE_CLASS);
    EXPECT_THAT(properties(instances.delivered[0]),
                ElementsAre("SystemCreationClassName: string CIM_ComputerSystem [Key=TRUE]",
                            "SystemName: string array1 [Key=TRUE]",
                            "CreationClassName: string " + SERVICE_CLASS + " [Key=TRUE]",
                            "Name: string array1 [Key=TRUE]"));
}

TEST_F(StorageHardwareIDManagementServiceTest, AllKeysOfThePathAreStrings) {
    provider.enumerateInstanceNames(context, requestPath(SERVICE_CLASS.c_str()), paths);

    ASSERT_EQ(paths.delivered.size(), 1u);
    const Array<CIMKeyBinding> keys = paths.delivered[0].getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i].getType(), CIMKeyBinding::STRING);
    }
}

TEST_F(StorageHardwareIDManagementServiceTest, EnumerationsDeliverTheServiceForItsClassInAnyCase) {
    provider.enumerateInstances(context, requestPath("cim_storagehardwareidmanagementservice"),
                                false, false, CIMPropertyList(), instances);
    provider.enumerateInstanceNames(context, requestPath("CIM_STORAGEHARDWAREIDMANAGEMENTSERVICE"),
                                    paths);

    EXPECT_THAT(log(), ElementsAre("processing", "deliver " + SERVICE_PATH, "complete",
                                   "processing", "deliver " + SERVICE_PATH, "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, EnumerationsOfAnotherClassCompleteEmpty) {
    provider.enumerateInstances(context, requestPath("CIM_Service"), false, false,
                                CIMPropertyList(), instances);
    provider.enumerateInstanceNames(context, requestPath("CIM_Service"), paths);

    EXPECT_THAT(log(), ElementsAre("processing", "complete", "processing", "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, CreateMakesAnInitiatorAndGivesAReferenceToIt) {
    give("StorageID", String("iqn.2026-01.com.example:host1"));
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(
        log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing",
                           "createObject(13, DRAVInitiator{name=\"iqn.2026-01.com.example:host1\", "
                           "secret=\"\"})",
                           "deliverParamValue HardwareID: reference " + NEW_HOST_PATH,
                           "deliver sint32 0", "complete"));
    ASSERT_EQ(results.parameters.size(), 1u);
    EXPECT_TRUE(results.parameters[0].isTyped());
}

TEST_F(StorageHardwareIDManagementServiceTest, TheInvocationIsPublishedWithAllItsArguments) {
    invoke("CreateStorageHardwareID");

    EXPECT_EQ(events(), (std::vector<Event>{
                            {0, EMP_TYPE_METHOD_INVOKED,
                             "StorageHardwareIDManagementServiceProvider::invokeMethod()",
                             "objectReference=//client.example.com/root/snia:" + SERVICE_CLASS +
                                 ", methodName=CreateStorageHardwareID",
                             29, 254, "invokeMethod", "StorageHardwareIDManagementService.cpp"}}));
    EXPECT_EQ(EMP_TYPE_METHOD_INVOKED, 1);
}

TEST_F(StorageHardwareIDManagementServiceTest, TheReferenceIsInTheNamespaceOfTheRequest) {
    invoke("CreateStorageHardwareID", SERVICE_CLASS.c_str(), "root/other");

    ASSERT_EQ(results.parameters.size(), 1u);
    EXPECT_EQ(text(results.parameters[0].getValue()),
              "reference //array1.example.com/root/other:CIM_StorageHardwareID.InstanceID="
              "\"Ovrin:0D000042\"");
}

TEST_F(StorageHardwareIDManagementServiceTest, CreateWithoutStorageIDAsksForAnEmptyName) {
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(calls(), ElementsAre("createObject(13, DRAVInitiator{name=\"\", secret=\"\"})"));
    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Sint32(0))));
}

TEST_F(StorageHardwareIDManagementServiceTest, CreateReadsTheOtherParametersAndIgnoresThem) {
    give("IDType", Uint16(2));
    give("ElementName", String("mail server"));
    give("Setting", requestPath("CIM_StorageClientSettingData", {{"InstanceID", "1"}}));
    give("StorageID", String("iqn.host"));
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(calls(),
                ElementsAre("createObject(13, DRAVInitiator{name=\"iqn.host\", secret=\"\"})"));
    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Sint32(0))));
}

TEST_F(StorageHardwareIDManagementServiceTest, AParameterGivenTwiceTakesItsLastValue) {
    give("StorageID", String("iqn.first"));
    give("StorageID", String("iqn.last"));
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(calls(),
                ElementsAre("createObject(13, DRAVInitiator{name=\"iqn.last\", secret=\"\"})"));
}

TEST_F(StorageHardwareIDManagementServiceTest, ParameterNamesAreComparedExactly) {
    give("storageid", String("iqn.host"));
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(calls(), ElementsAre("createObject(13, DRAVInitiator{name=\"\", secret=\"\"})"));
}

TEST_F(StorageHardwareIDManagementServiceTest, MethodNamesAreComparedWithoutRegardToCase) {
    give("StorageID", String("iqn.host"));
    invoke("createstoragehardwareid");
    inParameters.clear();
    give("HardwareID", requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(NEW_HOST)}}));
    invoke("DELETESTORAGEHARDWAREID");

    EXPECT_THAT(calls(),
                ElementsAre("createObject(13, DRAVInitiator{name=\"iqn.host\", secret=\"\"})",
                            "deleteObject(13, 0x0D000042)"));
}

TEST_F(StorageHardwareIDManagementServiceTest, ARefusalOfTheEngineIsReturnValue4AndALine) {
    failNext("createObject", 17, "iSCSI name \"x\xC3\xA9\" is taken");
    give("StorageID", String("iqn.host"));
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(log(),
                ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing",
                            "createObject(13, DRAVInitiator{name=\"iqn.host\", secret=\"\"})",
                            "trace DRAVException.code: 17 DRAVException.message: "
                            "iSCSI name \"x\xC3\xA9\" is taken",
                            "deliver sint32 4", "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, TheLineOfARefusalGivesTheCodeAsAnUnsignedNumber) {
    failNext("createObject", 0xFFFFFFFF, "no");
    invoke("CreateStorageHardwareID");

    EXPECT_THAT(traces(),
                ElementsAre(TRACE, "DRAVException.code: 4294967295 DRAVException.message: no"));
}

struct WrongType {
    const char* name;
    CIMValue value;
};

class CreateWithAWrongType : public StorageHardwareIDManagementServiceTest,
                             public testing::WithParamInterface<WrongType> {};

TEST_P(CreateWithAWrongType, IsATypeMismatchBeforeTheEngineIsAsked) {
    give(GetParam().name, GetParam().value);

    EXPECT_EQ(
        thrownBy<TypeMismatchException>([this] { invoke("CreateStorageHardwareID"); }).find("type"),
        0u);

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing"));
}

INSTANTIATE_TEST_SUITE_P(Parameters, CreateWithAWrongType,
                         testing::Values(WrongType{"Setting", String("text")},
                                         WrongType{"ElementName", Uint16(1)},
                                         WrongType{"StorageID", Uint32(1)},
                                         WrongType{"IDType", Uint32(5)}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(StorageHardwareIDManagementServiceTest, OtherExceptionsAreNotCaughtNotEvenTheEnginesBase) {
    struct ThrowingHandler : MethodResultHandler {
        using MethodResultHandler::deliverParamValue;
        void deliverParamValue(const CIMParamValue&) override { fail(); }
        std::function<void()> fail;
    } handler;
    const auto create = [&] {
        provider.invokeMethod(context, requestPath(SERVICE_CLASS.c_str()),
                              CIMName("CreateStorageHardwareID"), inParameters, handler);
    };

    handler.fail = [] { throw CIMOperationFailedException("unplugged"); };
    EXPECT_EQ(thrownBy<CIMOperationFailedException>(create), "unplugged");
    handler.fail = [] { throw std::runtime_error("unplugged"); };
    EXPECT_THROW(create(), std::runtime_error);
    EXPECT_THAT(handler.returnValues, IsEmpty());
}

TEST_F(StorageHardwareIDManagementServiceTest, DeleteRemovesTheInitiatorNamedByTheFirstKey) {
    give("HardwareID", requestPath("CIM_Anything", {{"Name", keyText(0x0D000003)}}));
    invoke("DeleteStorageHardwareID");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing",
                                   "deleteObject(13, 0x0D000003)", "deliver sint32 0", "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, DeleteTakesTheLastHardwareID) {
    give("HardwareID", requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(0x0D000003)}}));
    give("HardwareID", requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(0x0D000004)}}));
    invoke("DeleteStorageHardwareID");

    EXPECT_THAT(calls(), ElementsAre("deleteObject(13, 0x0D000004)"));
}

TEST_F(StorageHardwareIDManagementServiceTest, DeleteAcceptsWhatCreateGave) {
    invoke("CreateStorageHardwareID");
    ASSERT_EQ(results.parameters.size(), 1u);
    give("HardwareID", results.parameters[0].getValue());
    clearLog();
    invoke("DeleteStorageHardwareID");

    EXPECT_THAT(calls(), ElementsAre("deleteObject(13, 0x0D000042)"));
}

TEST_F(StorageHardwareIDManagementServiceTest,
       TheReferenceNamesTheHostAsItIsServedAlwaysByISCSIName) {
    constexpr Uint16 portWWN = 2;
    give("StorageID", String("iqn.host"));
    give("IDType", portWWN);
    invoke("CreateStorageHardwareID");
    ASSERT_EQ(results.parameters.size(), 1u);
    CIMObjectPath reference;
    results.parameters[0].getValue().get(reference);

    StorageHardwareIDProvider hosts;
    CIMOMHandle handle;
    hosts.initialize(handle);
    hosts.getInstance(context, reference, false, false, CIMPropertyList(), instances);

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_TRUE(instances.delivered[0].getPath().identical(reference));
    EXPECT_THAT(properties(instances.delivered[0]),
                testing::IsSupersetOf({"StorageID: string iqn.host", "IDType: uint16 5"}));
}

TEST_F(StorageHardwareIDManagementServiceTest, AFailureToDeleteIsTheEnginesException) {
    failNext("deleteObject", 5, "in use");
    give("HardwareID", requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(NEW_HOST)}}));

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] { invoke("DeleteStorageHardwareID"); }),
              "in use");

    EXPECT_THAT(
        log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", "deleteObject(13, 0x0D000042)"));
}

TEST_F(StorageHardwareIDManagementServiceTest, DeleteWithoutHardwareIDIsOutOfBounds) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { invoke("DeleteStorageHardwareID"); }),
              "index out of bounds");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing"));
}

TEST_F(StorageHardwareIDManagementServiceTest, DeleteOfAReferenceWithoutKeysIsOutOfBounds) {
    give("HardwareID", requestPath("CIM_StorageHardwareID"));

    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { invoke("DeleteStorageHardwareID"); }),
              "index out of bounds");

    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(StorageHardwareIDManagementServiceTest, DeleteOfAWrongTypeIsATypeMismatch) {
    give("HardwareID", String(keyText(NEW_HOST).c_str()));

    EXPECT_EQ(
        thrownBy<TypeMismatchException>([this] { invoke("DeleteStorageHardwareID"); }).find("type"),
        0u);

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing"));
}

TEST_F(StorageHardwareIDManagementServiceTest, AnUnknownMethodCompletesWithoutAReturnValue) {
    invoke("RenameStorageHardwareID");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, AnotherClassCompletesWithoutAReturnValue) {
    give("StorageID", String("iqn.host"));
    invoke("CreateStorageHardwareID", "CIM_ControllerConfigurationService");

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing", "complete"));
}

TEST_F(StorageHardwareIDManagementServiceTest, TheServicesClassIsComparedWithoutRegardToCase) {
    invoke("CreateStorageHardwareID", "cim_storagehardwareidmanagementservice");

    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Sint32(0))));
}

} // namespace
