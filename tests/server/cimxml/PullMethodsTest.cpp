// Calls that open, pull and close enumerations.
#include <gmock/gmock.h>

#include "server/cimxml/IntrinsicMethods.h"
#include "server/operation/Utf8.h"
#include "tests/server/cimxml/Requests.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

const std::string className = parameter("ClassName", R"(<CLASSNAME NAME="C"/>)");
const std::string instanceName = parameter(
    "InstanceName",
    R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="k"><KEYVALUE>v</KEYVALUE></KEYBINDING>)"
    "</INSTANCENAME>");

std::string with(const std::string& name, const std::string& text) {
    return parameter(name, "<VALUE>" + text + "</VALUE>");
}

OpenEnumeration opened(const std::string& method, const std::string& parameters) {
    return operationOf<OpenEnumeration>(decodeIntrinsic(method, parameters));
}

template<class T>
T enumerationOf(const std::string& method, const std::string& parameters) {
    return std::get<T>(opened(method, parameters).enumeration);
}

std::string error(const std::string& method, const std::string& parameters) {
    return errorOf(decodeIntrinsic(method, parameters));
}

std::string refusal(const std::string& method, const std::string& parameters) {
    return refusalOf([&] { decodeIntrinsic(method, parameters); });
}

TEST(OpenCall, HasTheDefaultsOfTheStandard) {
    const OpenEnumeration operation = opened("OpenEnumerateInstances", className);
    EXPECT_EQ(toUtf8(operation.nameSpace.getString()), "root/test");
    EXPECT_EQ(operation.maxObjectCount, 0U);
    EXPECT_FALSE(operation.operationTimeout);
    EXPECT_FALSE(operation.continueOnError);
    EXPECT_EQ(toUtf8(operation.filterQuery), "");
    const auto& enumeration = std::get<EnumerateInstances>(operation.enumeration);
    EXPECT_EQ(toUtf8(enumeration.nameSpace.getString()), "root/test");
    EXPECT_EQ(toUtf8(enumeration.className.getString()), "C");
    EXPECT_TRUE(enumeration.deepInheritance);
    EXPECT_FALSE(enumeration.includeClassOrigin);
}

TEST(OpenCall, TakesItsOwnParametersAndThoseOfTheEnumeration) {
    const OpenEnumeration operation =
        opened("openenumerateinstances",
               with("MaxObjectCount", "7") + with("OperationTimeout", " 0x10 ") + className +
                   with("ContinueOnError", "true") + with("FilterQueryLanguage", "DMTF:FQL") +
                   with("FilterQuery", "n = 5") + with("DeepInheritance", "false"));
    EXPECT_EQ(operation.maxObjectCount, 7U);
    EXPECT_EQ(operation.operationTimeout, std::optional<Uint32>(16));
    EXPECT_TRUE(operation.continueOnError);
    EXPECT_EQ(toUtf8(operation.filterQueryLanguage), "DMTF:FQL");
    EXPECT_EQ(toUtf8(operation.filterQuery), "n = 5");
    EXPECT_FALSE(std::get<EnumerateInstances>(operation.enumeration).deepInheritance);
}

TEST(OpenCall, EachOpensItsEnumeration) {
    const std::string assoc = parameter("AssocClass", R"(<CLASSNAME NAME="A"/>)");
    const std::string result = parameter("ResultClass", R"(<CLASSNAME NAME="R"/>)");
    const std::string role = with("Role", "r");
    enumerationOf<EnumerateInstanceNames>("OpenEnumerateInstancePaths", className);
    const auto associators = enumerationOf<Associators>(
        "OpenAssociatorInstances", instanceName + assoc + result + role + with("ResultRole", "s"));
    EXPECT_EQ(toUtf8(associators.objectName.toString()), R"(C.k="v")");
    EXPECT_EQ(toUtf8(associators.assocClass.getString()), "A");
    EXPECT_EQ(toUtf8(associators.resultClass.getString()), "R");
    EXPECT_EQ(toUtf8(associators.role), "r");
    EXPECT_EQ(toUtf8(associators.resultRole), "s");
    enumerationOf<AssociatorNames>("OpenAssociatorInstancePaths",
                                   instanceName + assoc + result + role + with("ResultRole", "s"));
    enumerationOf<References>("OpenReferenceInstances", instanceName + result + role);
    enumerationOf<ReferenceNames>("OpenReferenceInstancePaths", instanceName + result + role);
}

TEST(OpenCall, SourceMustBeAnInstanceWithKeys) {
    const std::string text = "4 Full Model Path with keys required.";
    EXPECT_EQ(
        error("OpenAssociatorInstances", parameter("InstanceName", R"(<CLASSNAME NAME="C"/>)")),
        text);
    EXPECT_EQ(error("OpenReferenceInstancePaths",
                    parameter("InstanceName", R"(<INSTANCENAME CLASSNAME="C"/>)")),
              text);
}

TEST(OpenCall, RefusesParametersOfThePlainOperation) {
    EXPECT_EQ(error("OpenEnumerateInstances", className + with("LocalOnly", "true")),
              "7 Unrecognized or invalid request input parameter \"LocalOnly\"");
    EXPECT_EQ(error("OpenAssociatorInstances", parameter("ObjectName", "")),
              "7 Unrecognized or invalid request input parameter \"ObjectName\"");
    EXPECT_EQ(error("OpenEnumerateInstancePaths", className + with("DeepInheritance", "true")),
              "7 Unrecognized or invalid request input parameter \"DeepInheritance\"");
}

TEST(OpenCall, NumbersHaveNoSignAnd32Bits) {
    for (const char* text : {"abc", "-1", ""}) {
        EXPECT_THAT(refusal("OpenEnumerateInstances", className + with("MaxObjectCount", text)),
                    testing::HasSubstr("Invalid unsigned integer value"))
            << text;
    }
    EXPECT_THAT(
        refusal("OpenEnumerateInstances", className + with("OperationTimeout", "4294967296")),
        testing::HasSubstr("Uint32 value out of range"));
    EXPECT_THAT(refusal("OpenEnumerateInstances", className + parameter("MaxObjectCount", "")),
                testing::HasSubstr("Expected VALUE element"));
}

TEST(OpenCall, ForAQueryIsNotSupported) {
    EXPECT_EQ(error("OpenQueryInstances", with("FilterQuery", "x")), "7 ");
}

TEST(PullCall, NeedsContextAndCount) {
    EXPECT_EQ(error("PullInstancesWithPath", with("MaxObjectCount", "2")),
              "4 Required parameter \"EnumerationContext\" missing from request.");
    EXPECT_EQ(error("PullInstancePaths", with("EnumerationContext", "5")),
              "4 Required parameter \"MaxObjectCount\" missing from request.");
    EXPECT_EQ(error("CloseEnumeration", ""),
              "4 The EnumerationContext input parameter is required.");
    EXPECT_EQ(error("EnumerationCount", ""),
              "4 The EnumerationContext input parameter is required.");
}

TEST(PullCall, SaysWhatItPulls) {
    const std::string parameters = with("EnumerationContext", "5") + with("MaxObjectCount", "2");
    const auto pulled = [&](const char* method) {
        return operationOf<PullEnumeration>(decodeIntrinsic(method, parameters));
    };
    EXPECT_EQ(toUtf8(pulled("PullInstancesWithPath").context), "5");
    EXPECT_EQ(pulled("PullInstancesWithPath").maxObjectCount, 2U);
    EXPECT_EQ(pulled("PullInstancesWithPath").pulled, Pulled::instancesWithPath);
    EXPECT_EQ(pulled("PullInstancePaths").pulled, Pulled::instancePaths);
    EXPECT_EQ(pulled("PullInstances").pulled, Pulled::instances);
}

} // namespace
} // namespace smisd::test
