#include "server/cimxml/IntrinsicMethods.h"

#include "server/operation/Utf8.h"
#include "tests/server/cimxml/Requests.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

const std::string instanceName =
    R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="k"><KEYVALUE>v</KEYVALUE></KEYBINDING>)"
    "</INSTANCENAME>";
const std::string className = R"(<CLASSNAME NAME="C"/>)";

std::string value(const std::string& text) {
    return "<VALUE>" + text + "</VALUE>";
}

std::string show(const CIMPropertyList& list) {
    if (list.isNull()) {
        return "all";
    }
    std::string text;
    for (Uint32 i = 0; i < list.size(); ++i) {
        text += toUtf8(list[i].getString()) + ",";
    }
    return text;
}

template<class T>
T decoded(const std::string& method, const std::string& parameters) {
    return operationOf<T>(decodeIntrinsic(method, parameters));
}

std::string error(const std::string& method, const std::string& parameters) {
    return errorOf(decodeIntrinsic(method, parameters));
}

std::string refusal(const std::string& method, const std::string& parameters) {
    return refusalOf([&] { decodeIntrinsic(method, parameters); });
}

TEST(IntrinsicCall, GetInstanceHasTheDefaultsOfTheStandard) {
    const auto operation =
        decoded<GetInstance>("GetInstance", parameter("InstanceName", instanceName));
    EXPECT_EQ(toUtf8(operation.nameSpace.getString()), "root/test");
    EXPECT_EQ(toUtf8(operation.instanceName.toString()), R"(C.k="v")");
    EXPECT_TRUE(operation.localOnly);
    EXPECT_FALSE(operation.includeQualifiers);
    EXPECT_FALSE(operation.includeClassOrigin);
    EXPECT_EQ(show(operation.propertyList), "all");
}

TEST(IntrinsicCall, ParametersComeInAnyOrderAndCase) {
    const auto operation =
        decoded<GetInstance>("getinstance", parameter("INCLUDEQUALIFIERS", value("true")) +
                                                parameter("includeClassOrigin", value("TRUE")) +
                                                parameter("LocalOnly", value("False")) +
                                                parameter("instancename", instanceName));
    EXPECT_FALSE(operation.localOnly);
    EXPECT_TRUE(operation.includeQualifiers);
    EXPECT_TRUE(operation.includeClassOrigin);
}

TEST(IntrinsicCall, PropertyListIsNullEmptyOrNames) {
    const auto list = [](const std::string& xml) {
        return show(
            decoded<EnumerateInstances>("EnumerateInstances", parameter("ClassName", className) +
                                                                  parameter("PropertyList", xml))
                .propertyList);
    };
    EXPECT_EQ(list(""), "all");
    EXPECT_EQ(list("<VALUE.ARRAY/>"), "");
    EXPECT_EQ(list("<VALUE.ARRAY><VALUE>b</VALUE><VALUE>a</VALUE><VALUE>B</VALUE></VALUE.ARRAY>"),
              "b,a,");
}

TEST(IntrinsicCall, IllegalNameInPropertyListIsAnInvalidParameter) {
    const std::string answer =
        error("EnumerateInstances",
              parameter("ClassName", className) +
                  parameter("PropertyList", "<VALUE.ARRAY><VALUE>a b</VALUE></VALUE.ARRAY>"));
    EXPECT_TRUE(answer.starts_with("4 ")) << answer;
    EXPECT_NE(answer.find("a b"), std::string::npos) << answer;
}

TEST(IntrinsicCall, EnumerateInstancesIsDeepUnlessToldOtherwise) {
    EXPECT_TRUE(decoded<EnumerateInstances>("EnumerateInstances", parameter("ClassName", className))
                    .deepInheritance);
    EXPECT_FALSE(decoded<EnumerateInstances>("EnumerateInstances",
                                             parameter("ClassName", className) +
                                                 parameter("DeepInheritance", value("FALSE")))
                     .deepInheritance);
}

TEST(IntrinsicCall, ModifyInstanceHasKeysAndProperties) {
    const auto operation = decoded<ModifyInstance>(
        "ModifyInstance",
        parameter("ModifiedInstance",
                  "<VALUE.NAMEDINSTANCE>" + instanceName +
                      R"(<INSTANCE CLASSNAME="C"><PROPERTY NAME="p" TYPE="string">)"
                      "<VALUE>x</VALUE></PROPERTY></INSTANCE>"
                      "</VALUE.NAMEDINSTANCE>"));
    EXPECT_TRUE(operation.includeQualifiers);
    EXPECT_EQ(toUtf8(operation.modifiedInstance.getPath().toString()), R"(C.k="v")");
    EXPECT_EQ(operation.modifiedInstance.getPropertyCount(), 1U);
}

TEST(IntrinsicCall, ClassesOfModifiedInstanceMustAgree) {
    EXPECT_EQ(error("ModifyInstance",
                    parameter("ModifiedInstance", "<VALUE.NAMEDINSTANCE>" + instanceName +
                                                      R"(<INSTANCE CLASSNAME="D"/>)"
                                                      "</VALUE.NAMEDINSTANCE>")),
              "4 type mismatch");
}

TEST(IntrinsicCall, AssociatorsTakesEveryArgument) {
    const auto operation = decoded<Associators>(
        "Associators",
        parameter("ObjectName", instanceName) +
            parameter("AssocClass", R"(<CLASSNAME NAME="A"/>)") +
            parameter("ResultClass", R"(<CLASSNAME NAME="R"/>)") +
            parameter("Role", value("Antecedent")) + parameter("ResultRole", value("Dependent")) +
            parameter("IncludeQualifiers", value("TRUE")) +
            parameter("IncludeClassOrigin", value("TRUE")) +
            parameter("PropertyList", "<VALUE.ARRAY><VALUE>x</VALUE></VALUE.ARRAY>"));
    EXPECT_EQ(toUtf8(operation.objectName.toString()), R"(C.k="v")");
    EXPECT_EQ(toUtf8(operation.assocClass.getString()), "A");
    EXPECT_EQ(toUtf8(operation.resultClass.getString()), "R");
    EXPECT_EQ(toUtf8(operation.role), "Antecedent");
    EXPECT_EQ(toUtf8(operation.resultRole), "Dependent");
    EXPECT_TRUE(operation.includeQualifiers);
    EXPECT_TRUE(operation.includeClassOrigin);
    EXPECT_EQ(show(operation.propertyList), "x,");
}

TEST(IntrinsicCall, NullClassAndRoleAreAbsent) {
    const auto operation = decoded<ReferenceNames>(
        "ReferenceNames", parameter("ObjectName", className) +
                              R"(<IPARAMVALUE NAME="ResultClass"/><IPARAMVALUE NAME="Role"/>)");
    EXPECT_EQ(toUtf8(operation.objectName.toString()), "C");
    EXPECT_TRUE(operation.resultClass.isNull());
    EXPECT_EQ(toUtf8(operation.role), "");
}

TEST(IntrinsicCall, ClassIsNoInstanceWithoutKeys) {
    const auto ofClass = [](const std::string& object) {
        return decoded<References>("References", parameter("ObjectName", object)).ofClass;
    };
    EXPECT_TRUE(ofClass(className));
    EXPECT_FALSE(ofClass(R"(<INSTANCENAME CLASSNAME="C"/>)"));
}

TEST(IntrinsicCall, SetPropertyValueIsUntyped) {
    const std::string target =
        parameter("InstanceName", instanceName) + parameter("PropertyName", value("p"));
    EXPECT_EQ(decoded<SetProperty>("SetProperty", target + parameter("NewValue", value("5")))
                  .newValue.getType(),
              CIMTYPE_STRING);
    EXPECT_TRUE(decoded<SetProperty>("SetProperty", target).newValue.isNull());
    EXPECT_EQ(decoded<SetProperty>(
                  "SetProperty", target + parameter("NewValue", "<VALUE.REFERENCE>" + instanceName +
                                                                    "</VALUE.REFERENCE>"))
                  .newValue.getType(),
              CIMTYPE_REFERENCE);
}

TEST(IntrinsicCall, SchemaOperationsAreKnown) {
    EXPECT_TRUE(decoded<GetClass>("GetClass", parameter("ClassName", className)).includeQualifiers);
    EXPECT_TRUE(decoded<EnumerateClasses>("EnumerateClasses", "").className.isNull());
    EXPECT_FALSE(decoded<EnumerateClassNames>("EnumerateClassNames", "").deepInheritance);
    EXPECT_EQ(toUtf8(decoded<GetQualifier>("GetQualifier", parameter("QualifierName", value("Key")))
                         .qualifierName.getString()),
              "Key");
    EXPECT_NO_THROW(decoded<EnumerateQualifiers>("EnumerateQualifiers", ""));
}

TEST(IntrinsicCall, UnknownMethodIsNotSupported) {
    EXPECT_EQ(error("FrobInstance", ""), "7 Unrecognized intrinsic method: FrobInstance");
    EXPECT_EQ(error("ExecQuery", parameter("Query", value("x"))), "7 ");
}

TEST(IntrinsicCall, UnknownParameterIsNotSupported) {
    EXPECT_EQ(error("GetInstance",
                    parameter("InstanceName", instanceName) + parameter("Nosuch", value("x"))),
              "7 Unrecognized or invalid request input parameter \"Nosuch\"");
}

TEST(IntrinsicCall, ParameterGivenTwiceIsInvalid) {
    EXPECT_EQ(error("GetInstance", parameter("InstanceName", instanceName) +
                                       parameter("InstanceName", instanceName)),
              "4 Duplicated request input parameter.");
}

TEST(IntrinsicCall, MissingParameterIsInvalid) {
    EXPECT_EQ(error("EnumerateInstances", ""),
              "4 Required parameter \"ClassName\" missing from request.");
    EXPECT_EQ(error("CreateInstance", ""),
              "4 Required parameter \"NewInstance\" missing from request.");
    EXPECT_EQ(error("GetInstance", ""), "4 ");
    EXPECT_EQ(error("DeleteInstance", ""), "4 ");
}

TEST(IntrinsicCall, ValueOfAnotherKindIsRefused) {
    EXPECT_EQ(refusal("GetInstance", parameter("InstanceName", className)),
              "400 request-not-valid: Validation error: on line 1: Expected close of IPARAMVALUE "
              "element, got CLASSNAME instead");
    EXPECT_EQ(refusal("EnumerateInstances", parameter("ClassName", value("C"))),
              "400 request-not-valid: Validation error: on line 1: expected CLASSNAME element");
    EXPECT_EQ(refusal("GetInstance", parameter("IncludeQualifiers", value("maybe"))),
              "400 request-not-valid: Semantic error: on line 1: Invalid value for VALUE element: "
              "must be \"TRUE\" or \"FALSE\"");
    EXPECT_EQ(refusal("GetInstance", parameter("PropertyList", value("x"))),
              "400 request-not-valid: Validation error: on line 1: Expected close of IPARAMVALUE "
              "element, got VALUE instead");
    EXPECT_EQ(refusal("GetInstance", R"(<IPARAMVALUE NAME="InstanceName"/>)"),
              "400 request-not-valid: Validation error: on line 1: A null value is not valid for "
              "IPARAMVALUE \"InstanceName\".");
    EXPECT_EQ(refusal("GetInstance", "<IPARAMVALUE/>"),
              "400 request-not-valid: Validation error: on line 1: Missing IPARAMVALUE.NAME "
              "attribute");
    EXPECT_EQ(refusal("EnumerateQualifiers", "<FOO/>"),
              "400 request-not-valid: Validation error: on line 1: Expected close of IMETHODCALL "
              "element, got FOO instead");
}

} // namespace
} // namespace smisd::test
