#include "server/cimxml/ElementReaders.h"
#include "server/operation/Utf8.h"
#include "tests/server/cimxml/Requests.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

std::string pathOf(const std::string& xml, CIMObjectPath (*read)(Element)) {
    return readElement(xml, [&](const Element& root) { return toUtf8(read(root).toString()); });
}

std::string instanceNameOf(const std::string& keys) {
    return pathOf("<INSTANCENAME CLASSNAME=\"C\">" + keys + "</INSTANCENAME>", readInstanceName);
}

std::string instanceNameErrorOf(const std::string& xml) {
    return elementErrorOf(xml, [](const Element& root) { readInstanceName(root); });
}

const std::string name =
    R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="k"><KEYVALUE>v</KEYVALUE>)"
    "</KEYBINDING></INSTANCENAME>";
const std::string nameSpace =
    R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="x"/></LOCALNAMESPACEPATH>)";
const std::string fullNameSpace = "<NAMESPACEPATH><HOST>h</HOST>" + nameSpace + "</NAMESPACEPATH>";

TEST(InstanceName, KeysHaveTheTypesOfTheirValueTypes) {
    EXPECT_EQ(
        instanceNameOf(
            R"(<KEYBINDING NAME="s"><KEYVALUE VALUETYPE="string">1</KEYVALUE></KEYBINDING>)"
            R"(<KEYBINDING NAME="n"><KEYVALUE VALUETYPE="numeric"> 1 </KEYVALUE></KEYBINDING>)"
            R"(<KEYBINDING NAME="b"><KEYVALUE VALUETYPE="boolean">TRUE</KEYVALUE></KEYBINDING>)"
            R"(<KEYBINDING NAME="d"><KEYVALUE>x</KEYVALUE></KEYBINDING>)"),
        R"(C.b=TRUE,d="x",n=1,s="1")");
}

TEST(InstanceName, KeyTextIsNotJudged) {
    EXPECT_EQ(
        instanceNameOf(
            R"(<KEYBINDING NAME="n"><KEYVALUE VALUETYPE="numeric">abc</KEYVALUE></KEYBINDING>)"),
        "C.n=abc");
}

TEST(InstanceName, MayHaveNoKeys) {
    EXPECT_EQ(instanceNameOf(""), "C");
    EXPECT_EQ(pathOf(R"(<INSTANCENAME CLASSNAME="C"/>)", readInstanceName), "C");
}

TEST(InstanceName, LoneKeyValueIsAKeyWithoutName) {
    const CIMObjectPath path = readElement(
        R"(<INSTANCENAME CLASSNAME="C"><KEYVALUE>v</KEYVALUE></INSTANCENAME>)", readInstanceName);
    ASSERT_EQ(path.getKeyBindings().size(), 1U);
    EXPECT_TRUE(path.getKeyBindings()[0].getName().isNull());
    EXPECT_TRUE(path.getKeyBindings()[0].getValue() == String("v"));
}

TEST(InstanceName, ReferenceKeyKeepsItsForm) {
    const auto key = [](const std::string& reference) {
        return "<KEYBINDING NAME=\"r\"><VALUE.REFERENCE>" + reference +
               "</VALUE.REFERENCE></KEYBINDING>";
    };
    EXPECT_EQ(instanceNameOf(key(name)), R"(C.r="C.k=\"v\"")");
    EXPECT_EQ(
        instanceNameOf(key("<LOCALINSTANCEPATH>" + nameSpace + name + "</LOCALINSTANCEPATH>")),
        R"(C.r="root/x:C.k=\"v\"")");
    EXPECT_EQ(instanceNameOf(key("<INSTANCEPATH>" + fullNameSpace + name + "</INSTANCEPATH>")),
              R"(C.r="//h/root/x:C.k=\"v\"")");
}

TEST(InstanceName, ErrorsNameTheElement) {
    EXPECT_EQ(instanceNameErrorOf("<INSTANCENAME/>"),
              "validation: missing INSTANCENAME.CLASSNAME attribute");
    EXPECT_EQ(instanceNameErrorOf(R"(<INSTANCENAME CLASSNAME="a b"/>)"),
              "semantic: Illegal value for INSTANCENAME.CLASSNAME attribute");
    EXPECT_EQ(
        instanceNameErrorOf(R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="k"/></INSTANCENAME>)"),
        "validation: Expected KEYVALUE or VALUE.REFERENCE element");
    EXPECT_EQ(instanceNameErrorOf(
                  R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME=""><KEYVALUE/></KEYBINDING>)"
                  "</INSTANCENAME>"),
              "semantic: Illegal value for KEYBINDING.NAME attribute");
    EXPECT_EQ(instanceNameErrorOf(R"(<INSTANCENAME CLASSNAME="C"><KEYBINDING NAME="k">)"
                                  R"(<KEYVALUE VALUETYPE="foo"/></KEYBINDING></INSTANCENAME>)"),
              "semantic: Illegal value for KEYVALUE.VALUETYPE attribute; CIMValue must be one of "
              "\"string\", \"boolean\", or \"numeric\"");
}

TEST(InstanceName, ReferenceKeyIsLimitedInLength) {
    std::string keys = "<KEYVALUE>" + std::string((1U << 20) + 1, 'x') + "</KEYVALUE>";
    keys = R"(<KEYBINDING NAME="r"><VALUE.REFERENCE><INSTANCENAME CLASSNAME="C">)"
           R"(<KEYBINDING NAME="k">)" +
           keys + "</KEYBINDING></INSTANCENAME></VALUE.REFERENCE></KEYBINDING>";
    EXPECT_EQ(instanceNameErrorOf("<INSTANCENAME CLASSNAME=\"C\">" + keys + "</INSTANCENAME>"),
              "validation: The reference key is too long");
}

TEST(ValueReference, TakesEachForm) {
    const auto reference = [](const std::string& form) {
        return pathOf("<VALUE.REFERENCE>" + form + "</VALUE.REFERENCE>", readValueReference);
    };
    EXPECT_EQ(reference(name), R"(C.k="v")");
    EXPECT_EQ(reference("<LOCALINSTANCEPATH>" + nameSpace + name + "</LOCALINSTANCEPATH>"),
              R"(root/x:C.k="v")");
    EXPECT_EQ(reference("<INSTANCEPATH>" + fullNameSpace + name + "</INSTANCEPATH>"),
              R"(//h/root/x:C.k="v")");
    EXPECT_EQ(reference(R"(<CLASSNAME NAME="C"/>)"), "C");
    EXPECT_EQ(
        reference("<LOCALCLASSPATH>" + nameSpace + R"(<CLASSNAME NAME="C"/></LOCALCLASSPATH>)"),
        "root/x:C");
    EXPECT_EQ(reference("<CLASSPATH>" + fullNameSpace + R"(<CLASSNAME NAME="C"/></CLASSPATH>)"),
              "//h/root/x:C");
}

TEST(ValueReference, RefusesOtherContent) {
    const auto read = [](const Element& root) { readValueReference(root); };
    EXPECT_TRUE(
        elementErrorOf("<VALUE.REFERENCE/>", read).starts_with("validation: Expected one of"));
    EXPECT_TRUE(elementErrorOf("<VALUE.REFERENCE>C.k=1</VALUE.REFERENCE>", read)
                    .starts_with("validation: Expected one of"));
    EXPECT_EQ(elementErrorOf("<VALUE.REFERENCE>" + name + name + "</VALUE.REFERENCE>", read),
              "validation: Expected close of VALUE.REFERENCE element, got INSTANCENAME instead");
}

TEST(LocalNamespacePath, NeedsLegalNames) {
    const auto read = [](const Element& root) { readLocalNamespacePath(root); };
    EXPECT_EQ(elementErrorOf("<LOCALNAMESPACEPATH/>", read),
              "validation: Expected one or more NAMESPACE elements within LOCALNAMESPACEPATH "
              "element");
    EXPECT_EQ(
        elementErrorOf(R"(<LOCALNAMESPACEPATH><NAMESPACE NAME="a b"/></LOCALNAMESPACEPATH>)", read),
        "semantic: Illegal value for NAMESPACE.NAME attribute");
}

TEST(InstancePath, NeedsHostAndNamespace) {
    const auto read = [](const Element& root) { readValueReference(root); };
    EXPECT_EQ(elementErrorOf("<VALUE.REFERENCE><INSTANCEPATH>" + name +
                                 "</INSTANCEPATH></VALUE.REFERENCE>",
                             read),
              "validation: expected NAMESPACEPATH element");
    EXPECT_EQ(elementErrorOf("<VALUE.REFERENCE><INSTANCEPATH><NAMESPACEPATH><HOST/>" + nameSpace +
                                 "</NAMESPACEPATH>" + name + "</INSTANCEPATH></VALUE.REFERENCE>",
                             read),
              "validation: expected content of HOST element");
}

} // namespace
} // namespace smisd::test
