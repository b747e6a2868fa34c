#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace smisd {
namespace {

class MethodOperationTest : public DispatchTest {
protected:
    Lines invoke(const char* className, const char* method,
                 std::initializer_list<CIMParamValue> parameters = {}, const char* id = "m") {
        Array<CIMParamValue> in;
        for (const CIMParamValue& parameter : parameters) {
            in.append(parameter);
        }
        return run(InvokeMethod{testNamespace, path(className, id), CIMName(method), in});
    }

    static CIMParamValue untyped(const char* name, const CIMValue& value) {
        return CIMParamValue(String(name), value, false);
    }
    static CIMParamValue typed(const char* name, const CIMValue& value) {
        return CIMParamValue(String(name), value, true);
    }
    static CIMValue text(const char* value) { return CIMValue(String(value)); }

    static constexpr const char* pathLine =
        "out path typed string //test.host/root/test:Test_Everything.Id=\"m\"";
};

TEST_F(MethodOperationTest, TheReturnValueComesFirstAndThenParametersInOrder) {
    EXPECT_THAT(
        invoke("Test_Everything", "echo", {typed("b", text("x")), typed("a", text("y"))}),
        ElementsAre("return uint32 0", pathLine, "out b typed string x", "out a typed string y"));
}

TEST_F(MethodOperationTest, TheLastOfTwoReturnValuesCounts) {
    EXPECT_THAT(invoke("Test_Everything", "Two"), ElementsAre("return uint32 2", pathLine));
}

TEST_F(MethodOperationTest, AReturnValueMayBeMissingButNotNull) {
    EXPECT_THAT(invoke("Test_Everything", "None"), IsEmpty());
    EXPECT_THAT(invoke("Test_Everything", "Null"),
                ElementsAre("error 1 The object is not initialized."));
}

TEST_F(MethodOperationTest, AClassIsAPathWithoutKeys) {
    EXPECT_THAT(run(InvokeMethod{testNamespace, path("Test_Everything"), CIMName("Echo"), {}}),
                ElementsAre("return uint32 0",
                            "out path typed string //test.host/root/test:Test_Everything"));
}

TEST_F(MethodOperationTest, UntypedParametersGetTheDeclaredType) {
    EXPECT_THAT(invoke("Test_Everything", "Echo",
                       {untyped("NUMBER", text("5")), untyped("text", text("5")),
                        untyped("texts", CIMValue(Array<String>(1, String("x")))),
                        untyped("when", CIMValue(CIMTYPE_STRING, false))}),
                ElementsAre("return uint32 0", pathLine, "out NUMBER typed uint32 5",
                            "out text typed string 5", "out texts typed string[] x ",
                            "out when typed datetime null"));
}

TEST_F(MethodOperationTest, TheClientsParametersStayAsTheyAre) {
    const CIMParamValue parameter = untyped("number", text("5"));
    invoke("Test_Everything", "Echo", {parameter});
    EXPECT_FALSE(CIMParamValue(parameter).isTyped());
    EXPECT_EQ(parameter.getValue(), text("5"));
}

TEST_F(MethodOperationTest, ParametersThatTheMethodDoesNotDeclareReachTheProviderUnchanged) {
    EXPECT_THAT(invoke("Test_Everything", "Echo",
                       {untyped("other", text("5")), typed("number", text("x"))}),
                ElementsAre("return uint32 0", pathLine, "out other untyped string 5",
                            "out number typed string x"));
}

TEST_F(MethodOperationTest, AnUntypedParameterThatIsNoneOfItsTypeIsRefused) {
    EXPECT_THAT(invoke("Test_Everything", "Echo", {untyped("number", text("x"))}),
                ElementsAre("error 4 Malformed uint32 value"));
    EXPECT_THAT(invoke("Test_Everything", "Echo", {untyped("texts", text("x"))}),
                ElementsAre("error 13 "));
    EXPECT_THAT(invoke("Test_Everything", "Echo", {untyped("element", text("X.k=1"))}),
                ElementsAre("error 4 Malformed reference value"));
}

TEST_F(MethodOperationTest, AnUntypedParameterWithAnIllegalNameFails) {
    const Lines lines = invoke("Test_Everything", "Echo", {untyped("a b", text("x"))});
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_THAT(lines[0], testing::StartsWith("error 1 "));
    EXPECT_THAT(lines[0], testing::HasSubstr(": a b"));
}

TEST_F(MethodOperationTest, AnUnknownMethodReachesTheProvider) {
    EXPECT_THAT(invoke("Test_Everything", "Fly"), ElementsAre("error 17 Fly"));
}

TEST_F(MethodOperationTest, AnUnknownMethodWithAnUntypedParameterIsNotFound) {
    EXPECT_THAT(invoke("Test_Everything", "Fly", {untyped("x", text("1"))}),
                ElementsAre("error 17 "));
}

TEST_F(MethodOperationTest, ErrorsOfTheProviderArrive) {
    EXPECT_THAT(invoke("Test_Everything", "Echo", {}, "cim:7:X"), ElementsAre("error 7 X"));
}

TEST_F(MethodOperationTest, AMethodIsNotAvailableWithoutAProviderOfExactlyTheClass) {
    EXPECT_THAT(invoke("Test_Unserved", "Do"), ElementsAre("error 16 Do"));
    EXPECT_THAT(invoke("Test_Special", "Echo"), ElementsAre("error 16 Echo"));
}

TEST_F(MethodOperationTest, AnUnknownClassIsNotFound) {
    EXPECT_THAT(invoke("Test_Nowhere", "Do"), ElementsAre("error 6 Test_Nowhere"));
    EXPECT_THAT(invoke("Test_Nowhere", "Do", {untyped("x", text("1"))}),
                ElementsAre("error 6 Test_Nowhere"));
}

TEST_F(MethodOperationTest, AnUnknownNamespaceIsNamed) {
    EXPECT_THAT(run(InvokeMethod{unknownNamespace, path("Test_Everything"), CIMName("Do"), {}}),
                ElementsAre("error 3 root/unknown"));
}

TEST_F(MethodOperationTest, AProviderWithoutTheInterfaceIsNotSupported) {
    EXPECT_THAT(invoke("Test_WrongInterface", "Do"),
                ElementsAre("error 7 Invalid provider interface."));
}

} // namespace
} // namespace smisd
