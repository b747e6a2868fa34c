#include "server/cimxml/ElementReaders.h"
#include "server/operation/Utf8.h"
#include "tests/server/cimxml/Requests.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

CIMInstance instanceWith(const std::string& content) {
    return readElement("<INSTANCE CLASSNAME=\"C\">" + content + "</INSTANCE>", readInstance);
}

std::string errorWith(const std::string& content) {
    return elementErrorOf("<INSTANCE CLASSNAME=\"C\">" + content + "</INSTANCE>",
                          [](const Element& root) { readInstance(root); });
}

// "n uint32[]: 1 2 "
std::string shown(const CIMProperty& property) {
    const CIMValue& value = property.getValue();
    return toUtf8(property.getName().getString()) + " " + cimTypeToString(property.getType()) +
           (property.isArray() ? "[]" : "") + (value.isNull() ? " null" : ": ") +
           toUtf8(value.toString());
}

TEST(ReadInstance, PropertiesKeepOrderTypeAndValue) {
    CIMInstance instance = instanceWith(
        R"(<PROPERTY NAME="b" TYPE="string"><VALUE> x </VALUE></PROPERTY>)"
        R"(<PROPERTY.ARRAY NAME="a" TYPE="uint16"><VALUE.ARRAY><VALUE>1</VALUE></VALUE.ARRAY>)"
        "</PROPERTY.ARRAY>"
        R"(<PROPERTY.REFERENCE NAME="r" REFERENCECLASS="D"><VALUE.REFERENCE>)"
        R"(<INSTANCENAME CLASSNAME="D"/></VALUE.REFERENCE></PROPERTY.REFERENCE>)");
    ASSERT_EQ(instance.getPropertyCount(), 3U);
    EXPECT_EQ(shown(instance.getProperty(0)), "b string: x");
    EXPECT_EQ(shown(instance.getProperty(1)), "a uint16[]: 1 ");
    EXPECT_EQ(shown(instance.getProperty(2)), "r reference: D");
    EXPECT_EQ(toUtf8(instance.getProperty(2).getReferenceClassName().getString()), "D");
    EXPECT_EQ(toUtf8(instance.getPath().toString()), "C");
}

TEST(ReadInstance, PropertyWithoutValueIsNull) {
    CIMInstance instance =
        instanceWith(R"(<PROPERTY NAME="a" TYPE="uint32"/>)"
                     R"(<PROPERTY.ARRAY NAME="b" TYPE="string"></PROPERTY.ARRAY>)"
                     R"(<PROPERTY.REFERENCE NAME="c"/>)"
                     R"(<PROPERTY NAME="d" TYPE="string"><VALUE/></PROPERTY>)");
    EXPECT_EQ(shown(instance.getProperty(0)), "a uint32 null");
    EXPECT_EQ(shown(instance.getProperty(1)), "b string[] null");
    EXPECT_EQ(shown(instance.getProperty(2)), "c reference null");
    EXPECT_EQ(shown(instance.getProperty(3)), "d string: ");
}

TEST(ReadInstance, ClassOriginPropagationAndQualifiersAreKept) {
    CIMInstance instance = instanceWith(
        R"(<QUALIFIER NAME="Description" TYPE="string"><VALUE>d</VALUE></QUALIFIER>)"
        R"(<PROPERTY NAME="a" TYPE="string" CLASSORIGIN="B" PROPAGATED="true">)"
        R"(<QUALIFIER NAME="Key" TYPE="boolean" OVERRIDABLE="false" TOSUBCLASS="false">)"
        "<VALUE>TRUE</VALUE></QUALIFIER><VALUE>x</VALUE></PROPERTY>");
    EXPECT_EQ(instance.getQualifierCount(), 1U);
    EXPECT_TRUE(instance.getQualifier(0).getFlavor().hasFlavor(CIMFlavor::OVERRIDABLE));
    CIMProperty property = instance.getProperty(0);
    EXPECT_EQ(toUtf8(property.getClassOrigin().getString()), "B");
    EXPECT_TRUE(property.getPropagated());
    ASSERT_EQ(property.getQualifierCount(), 1U);
    EXPECT_FALSE(property.getQualifier(0).getFlavor().hasFlavor(CIMFlavor::OVERRIDABLE));
    EXPECT_EQ(shown(property), "a string: x");
}

TEST(ReadInstance, ErrorsSayWhatIsWrong) {
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a" TYPE="uint8"><VALUE>256</VALUE></PROPERTY>)"),
              "semantic: Uint8 value out of range");
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a"/>)"), "validation: missing PROPERTY.TYPE attribute");
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a" TYPE="foo"/>)"),
              "semantic: Illegal value for PROPERTY.TYPE attribute");
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a" TYPE="reference"/>)"),
              "semantic: Illegal value for PROPERTY.TYPE attribute");
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a b" TYPE="string"/>)"),
              "semantic: Illegal value for PROPERTY.NAME attribute");
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a" TYPE="string"/><PROPERTY NAME="A" TYPE="string"/>)"),
              "semantic: duplicate property");
    EXPECT_EQ(errorWith(R"(<PROPERTY NAME="a" TYPE="string" PROPAGATED="yes"/>)"),
              "semantic: Invalid PROPAGATED.PROPERTY attribute value");
    EXPECT_EQ(errorWith("<VALUE>x</VALUE>"),
              "validation: Expected close of INSTANCE element, got VALUE instead");
}

TEST(ReadNamedInstance, PathHasTheKeys) {
    const CIMInstance instance = readElement(
        R"(<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME="c"><KEYBINDING NAME="k"><KEYVALUE>v)"
        R"(</KEYVALUE></KEYBINDING></INSTANCENAME><INSTANCE CLASSNAME="C"/></VALUE.NAMEDINSTANCE>)",
        readNamedInstance);
    EXPECT_EQ(toUtf8(instance.getPath().toString()), R"(c.k="v")");
}

TEST(ReadNamedInstance, ClassesOfNameAndInstanceMustAgree) {
    EXPECT_THROW(readElement(R"(<VALUE.NAMEDINSTANCE><INSTANCENAME CLASSNAME="D"/>)"
                             R"(<INSTANCE CLASSNAME="C"/></VALUE.NAMEDINSTANCE>)",
                             readNamedInstance),
                 TypeMismatchException);
}

} // namespace
} // namespace smisd::test
