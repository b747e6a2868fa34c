#include "server/cimxml/ElementReaders.h"
#include "server/operation/Utf8.h"
#include "tests/server/cimxml/Requests.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

const std::string name = R"(<INSTANCENAME CLASSNAME="C"/>)";

CIMParamValue paramValue(const std::string& attributes, const std::string& content) {
    return readElement("<PARAMVALUE NAME=\"P\"" + attributes + ">" + content + "</PARAMVALUE>",
                       readParamValue);
}

std::string paramError(const std::string& attributes, const std::string& content) {
    return elementErrorOf("<PARAMVALUE NAME=\"P\"" + attributes + ">" + content + "</PARAMVALUE>",
                          [](const Element& root) { readParamValue(root); });
}

// "uint32[] typed: 1 2 "
std::string shown(const CIMParamValue& param) {
    const CIMValue value = param.getValue();
    return std::string(cimTypeToString(value.getType())) + (value.isArray() ? "[]" : "") +
           (param.isTyped() ? " typed" : " untyped") + (value.isNull() ? " null" : ": ") +
           toUtf8(value.toString());
}

TEST(ParamValue, TypedScalarAndArray) {
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="uint32")", "<VALUE>7</VALUE>")), "uint32 typed: 7");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="boolean")", "<VALUE>true</VALUE>")),
              "boolean typed: TRUE");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="string")", "<VALUE/>")), "string typed: ");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="uint32")",
                               "<VALUE.ARRAY><VALUE>1</VALUE><VALUE>2</VALUE></VALUE.ARRAY>")),
              "uint32[] typed: 1 2 ");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="string")", "<VALUE.ARRAY/>")), "string[] typed: ");
}

TEST(ParamValue, UntypedIsAStringOrAnArrayOfStrings) {
    EXPECT_EQ(shown(paramValue("", "<VALUE>7</VALUE>")), "string untyped: 7");
    EXPECT_EQ(shown(paramValue("", "<VALUE.ARRAY><VALUE>7</VALUE></VALUE.ARRAY>")),
              "string[] untyped: 7 ");
}

TEST(ParamValue, ReferenceNeedsNoType) {
    const std::string reference = "<VALUE.REFERENCE>" + name + "</VALUE.REFERENCE>";
    EXPECT_EQ(shown(paramValue("", reference)), "reference typed: C");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="reference")", reference)), "reference typed: C");
    const std::string array = "<VALUE.REFARRAY>" + reference + reference + "</VALUE.REFARRAY>";
    EXPECT_EQ(shown(paramValue("", array)), "reference[] typed: C C ");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="reference")", array)), "reference[] typed: C C ");
}

TEST(ParamValue, WithoutValueIsAnUntypedNull) {
    EXPECT_EQ(shown(paramValue("", "")), "boolean untyped null");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="uint32")", "")), "boolean untyped null");
    EXPECT_EQ(shown(paramValue(R"( PARAMTYPE="reference")", "")), "boolean untyped null");
}

TEST(ParamValue, ErrorsSayWhatIsWrong) {
    EXPECT_EQ(paramError(R"( PARAMTYPE="uint32")", "<VALUE>abc</VALUE>"),
              "semantic: Invalid unsigned integer value");
    EXPECT_EQ(paramError(R"( PARAMTYPE="uint8")", "<VALUE.ARRAY><VALUE>256</VALUE></VALUE.ARRAY>"),
              "semantic: Uint8 value out of range");
    EXPECT_EQ(paramError(R"( PARAMTYPE="foo")", "<VALUE>x</VALUE>"),
              "semantic: Illegal value for PARAMVALUE.PARAMTYPE attribute");
    EXPECT_EQ(
        paramError(R"( PARAMTYPE="uint32")", "<VALUE.REFERENCE>" + name + "</VALUE.REFERENCE>"),
        "validation: Expected close of PARAMVALUE element, got VALUE.REFERENCE instead");
    EXPECT_EQ(paramError("", "<VALUE>1</VALUE><VALUE>2</VALUE>"),
              "validation: Expected close of PARAMVALUE element, got VALUE instead");
    EXPECT_EQ(elementErrorOf("<PARAMVALUE/>", [](const Element& root) { readParamValue(root); }),
              "validation: Missing PARAMVALUE.NAME attribute");
}

} // namespace
} // namespace smisd::test
