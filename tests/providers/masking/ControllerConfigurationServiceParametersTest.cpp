// How both methods of the service read what they are given.

#include "tests/providers/masking/ControllerConfigurationServiceTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct WrongType {
    const char* method;
    const char* parameter;
    CIMValue value;
    const char* name;
};

class WrongTypeTest : public ServiceTest, public testing::WithParamInterface<WrongType> {};

TEST_P(WrongTypeTest, IsATypeMismatchBeforeTheEngineIsAsked) {
    giveController();
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    giveTexts("LUNames", {"60A1"});
    give(GetParam().parameter, GetParam().value);

    EXPECT_EQ(thrownBy<TypeMismatchException>([this] { invoke(GetParam().method); }).find("type"),
              0u);

    EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing"));
}

const CIMObjectPath CONTROLLER("CIM_SCSIProtocolController.DeviceID=\"Ovrin:0E000002\"");
const Array<Uint32> NUMBERS;
const Array<String> TEXTS;

// Of each parameter, the right type without the array, and an array of another type.
const WrongType WRONG_TYPES[] = {
    {"ExposePaths", "LUNames", String("60A1"), "ExposeOneLUName"},
    {"ExposePaths", "LUNames", NUMBERS, "ExposeLUNamesAsNumbers"},
    {"ExposePaths", "InitiatorPortIDs", String("iqn.host1"), "ExposeOneInitiator"},
    {"ExposePaths", "InitiatorPortIDs", NUMBERS, "ExposeInitiatorsAsNumbers"},
    {"ExposePaths", "DeviceNumbers", String("1"), "ExposeOneDeviceNumber"},
    {"ExposePaths", "DeviceNumbers", NUMBERS, "ExposeDeviceNumbersAsNumbers"},
    {"ExposePaths", "DeviceAccesses", Uint16(2), "ExposeOneDeviceAccess"},
    {"ExposePaths", "DeviceAccesses", NUMBERS, "ExposeDeviceAccessesAsUint32"},
    {"ExposePaths", "ProtocolControllers", CONTROLLER, "ExposeOneController"},
    {"ExposePaths", "ProtocolControllers", TEXTS, "ExposeControllersAsTexts"},
    {"HidePaths", "LUNames", String("60A1"), "HideOneLUName"},
    {"HidePaths", "LUNames", NUMBERS, "HideLUNamesAsNumbers"},
    {"HidePaths", "InitiatorPortIDs", String("iqn.host1"), "HideOneInitiator"},
    {"HidePaths", "InitiatorPortIDs", NUMBERS, "HideInitiatorsAsNumbers"},
    {"HidePaths", "ProtocolControllers", CONTROLLER, "HideOneController"},
    {"HidePaths", "ProtocolControllers", TEXTS, "HideControllersAsTexts"},
};

INSTANTIATE_TEST_SUITE_P(Parameters, WrongTypeTest, testing::ValuesIn(WRONG_TYPES),
                         [](const auto& row) { return std::string(row.param.name); });

class MethodParametersTest : public ServiceTest, public testing::WithParamInterface<const char*> {
protected:
    void invokeIt() { invoke(GetParam()); }

    void expectOutOfBoundsWithoutACall() {
        EXPECT_EQ(thrownBy<IndexOutOfBoundsException>([this] { invokeIt(); }),
                  "index out of bounds");
        EXPECT_THAT(log(), ElementsAre(EVENT_ENTRY, TRACE_ENTRY, "processing"));
    }

    // The target that the method worked on, as the engine was told it.
    std::string targetWorkedOn() {
        for (const std::string& call : calls()) {
            if (call.starts_with("enumerateAssociatedObjects(")) {
                return call.substr(call.find('(') + 1, 10);
            }
        }
        return "none";
    }
};

INSTANTIATE_TEST_SUITE_P(Methods, MethodParametersTest, testing::Values("ExposePaths", "HidePaths"),
                         [](const auto& row) { return std::string(row.param); });

TEST_P(MethodParametersTest, WithoutControllersIsOutOfBounds) {
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    giveTexts("LUNames", {"60A1"});
    expectOutOfBoundsWithoutACall();
}

TEST_P(MethodParametersTest, AnEmptyArrayOfControllersIsOutOfBounds) {
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    give("ProtocolControllers", references({}));
    expectOutOfBoundsWithoutACall();
}

TEST_P(MethodParametersTest, AControllerWithoutKeysIsOutOfBounds) {
    give("ProtocolControllers", references({requestPath("CIM_SCSIProtocolController")}));
    expectOutOfBoundsWithoutACall();
}

TEST_P(MethodParametersTest, AControllerWithoutADeviceIDIsOutOfBounds) {
    give("ProtocolControllers",
         references({requestPath("CIM_SCSIProtocolController", {{"Name", keyText(TARGET)}})}));
    expectOutOfBoundsWithoutACall();
}

TEST_P(MethodParametersTest, ADeviceIDThatIsNoKeyTextNamesNoTarget) {
    give("ProtocolControllers",
         references({requestPath("CIM_SCSIProtocolController", {{"DeviceID", "two"}})}));
    invokeIt();

    EXPECT_EQ(targetWorkedOn(), "0xFFFFFFFF");
}

TEST_P(MethodParametersTest, OnlyTheFirstControllerCounts) {
    give("ProtocolControllers",
         references({requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(0x0E000007)}}),
                     requestPath("CIM_SCSIProtocolController")}));
    invokeIt();

    EXPECT_EQ(targetWorkedOn(), "0x0E000007");
}

TEST_P(MethodParametersTest, NeitherClassNorOtherKeysOfTheControllerAreExamined) {
    give("ProtocolControllers",
         references({requestPath("CIM_StorageVolume", {{"CreationClassName", "CIM_Other"},
                                                       {"deviceid", keyText(TARGET)},
                                                       {"SystemName", "elsewhere"}})}));
    invokeIt();

    EXPECT_EQ(targetWorkedOn(), "0x0E000002");
}

TEST_P(MethodParametersTest, TheTargetNeedNotBeATarget) {
    giveController(HOST2);
    invokeIt();

    EXPECT_EQ(targetWorkedOn(), "0x0D000002");
    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0))));
}

TEST_P(MethodParametersTest, AParameterGivenTwiceTakesItsLastValue) {
    giveController(0x0E000007);
    giveTexts("InitiatorPortIDs", {"iqn.host1"});
    giveTexts("LUNames", {"60A1"});
    giveController();
    giveTexts("InitiatorPortIDs", {"iqn.host2"});
    giveTexts("LUNames", {});
    invokeIt();

    EXPECT_EQ(targetWorkedOn(), "0x0E000002");
    EXPECT_THAT(calls(), testing::Contains("getiSCSIObjectIDByName(13, \"iqn.host2\")"));
    EXPECT_THAT(calls(), testing::Each(testing::Not(testing::AnyOf(testing::HasSubstr("iqn.host1"),
                                                                   testing::HasSubstr("60A1")))));
}

TEST_P(MethodParametersTest, AWrongTypeBeforeAGoodOneIsStillATypeMismatch) {
    give("LUNames", String("60A1"));
    giveTexts("LUNames", {"60A1"});
    giveController();

    EXPECT_EQ(thrownBy<TypeMismatchException>([this] { invokeIt(); }).find("type"), 0u);
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_P(MethodParametersTest, AParameterNameInAnotherCaseIsNotRecognised) {
    giveController();
    giveTexts("lunames", {"60A1"});
    giveTexts("initiatorPortIDs", {"iqn.host1"});
    invokeIt();

    EXPECT_THAT(calls(), testing::Each(testing::StartsWith("enumerateAssociatedObjects(")));
    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0))));
}

TEST_P(MethodParametersTest, ControllersInAnotherCaseAreMissing) {
    give("protocolControllers",
         references({requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(TARGET)}})}));
    expectOutOfBoundsWithoutACall();
}

TEST_P(MethodParametersTest, UnknownParametersAreIgnoredWhateverTheirType) {
    giveController();
    give("Job", requestPath("CIM_ConcreteJob"));
    give("TargetPortIDs", strings({"iqn.target"}));
    invokeIt();

    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0))));
}

TEST_P(MethodParametersTest, ParametersAreReadBeforeTheControllerIsLookedAt) {
    give("ProtocolControllers", references({}));
    give("InitiatorPortIDs", String("iqn.host1"));

    EXPECT_EQ(thrownBy<TypeMismatchException>([this] { invokeIt(); }).find("type"), 0u);
}

TEST_P(MethodParametersTest, ANullParameterIsAnEmptyArray) {
    giveController();
    give("LUNames", CIMValue(CIMTYPE_STRING, true));
    give("InitiatorPortIDs", CIMValue(CIMTYPE_STRING, true));
    invokeIt();

    EXPECT_THAT(calls(), testing::Each(testing::StartsWith("enumerateAssociatedObjects(")));
    EXPECT_THAT(results.returnValues, ElementsAre(CIMValue(Uint32(0))));
}

} // namespace
