#include "pegasus/host/XmlWriter.h"

#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

// What one of the writers appends for its arguments.
template<class... Parameter, class... Argument>
static std::string xml(void (*writer)(Text&, Parameter...), const Argument&... arguments) {
    Text out;
    out += '|';
    writer(out, arguments...);
    return std::string(out.view());
}

static std::string escaped(const String& text) {
    Text out, fromUtf8;
    Xml::appendEscaped(out, text);
    Xml::appendEscaped(fromUtf8, std::string_view(utf8(text)));
    EXPECT_EQ(out.view(), fromUtf8.view());
    return std::string(out.view());
}

static std::string value(const CIMValue& x) {
    return xml(Xml::appendValue, x);
}

TEST(XmlEscapes, MarkupIsReplaced) {
    EXPECT_EQ(escaped("<a b=\"c\">&'"), "&lt;a b=&quot;c&quot;&gt;&amp;&apos;");
    EXPECT_EQ(escaped("]]>"), "]]&gt;");
}

TEST(XmlEscapes, ControlCharactersAreDecimalReferences) {
    EXPECT_EQ(escaped("a\nb\tc\rd"), "a&#10;b&#9;c&#13;d");
    EXPECT_EQ(escaped("\x01\x1F\x7F"), "&#1;&#31;&#127;");
}

TEST(XmlEscapes, BlanksAtTheEndsAndAfterAnotherAreReferences) {
    EXPECT_EQ(escaped("a b"), "a b");
    EXPECT_EQ(escaped(" lead"), "&#32;lead");
    EXPECT_EQ(escaped("trail "), "trail&#32;");
    EXPECT_EQ(escaped("two  blanks"), "two &#32;blanks");
    EXPECT_EQ(escaped(" "), "&#32;");
    EXPECT_EQ(escaped("   "), "&#32; &#32;");
    EXPECT_EQ(escaped(""), "");
}

TEST(XmlEscapes, OtherCharactersAreRawUtf8) {
    EXPECT_EQ(escaped("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"),
              "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(XmlEscapes, MalformedUtf8IsReplaced) {
    Text out;
    Xml::appendEscaped(out, std::string_view("a\xFF"
                                             "b"));
    EXPECT_EQ(out.view(), "a\xEF\xBF\xBD"
                          "b");
}

TEST(XmlValue, EachScalarHasItsText) {
    EXPECT_EQ(value(CIMValue(Boolean(true))), "|<VALUE>TRUE</VALUE>\n");
    EXPECT_EQ(value(CIMValue(Uint8(255))), "|<VALUE>255</VALUE>\n");
    EXPECT_EQ(value(CIMValue(Sint8(-128))), "|<VALUE>-128</VALUE>\n");
    EXPECT_EQ(value(CIMValue(Uint64(-1))), "|<VALUE>18446744073709551615</VALUE>\n");
    EXPECT_EQ(value(CIMValue(Real32(1.1F))), "|<VALUE>1.1000000e+00</VALUE>\n");
    EXPECT_EQ(value(CIMValue(Real64(-1.1e300))), "|<VALUE>-1.1000000000000001e+300</VALUE>\n");
    EXPECT_EQ(value(CIMValue(Char16('<'))), "|<VALUE>&lt;</VALUE>\n");
    EXPECT_EQ(value(CIMValue(String("a & b"))), "|<VALUE>a &amp; b</VALUE>\n");
    EXPECT_EQ(value(CIMValue(CIMDateTime())), "|<VALUE>00000000000000.000000:000</VALUE>\n");
}

TEST(XmlValue, ANullIsNothing) {
    EXPECT_EQ(value(CIMValue()), "|");
    EXPECT_EQ(value(CIMValue(CIMTYPE_STRING, true)), "|");
}

TEST(XmlValue, ArraysAndEmptyOnes) {
    EXPECT_EQ(value(CIMValue(Array<String>(2, String("x")))),
              "|<VALUE.ARRAY>\n<VALUE>x</VALUE>\n<VALUE>x</VALUE>\n</VALUE.ARRAY>\n");
    EXPECT_EQ(value(CIMValue(Array<String>())), "|<VALUE.ARRAY>\n</VALUE.ARRAY>\n");
    EXPECT_EQ(value(CIMValue(Array<CIMObjectPath>(1, CIMObjectPath("C")))),
              "|<VALUE.REFARRAY>\n<VALUE.REFERENCE>\n<INSTANCENAME CLASSNAME=\"C\">\n"
              "</INSTANCENAME>\n</VALUE.REFERENCE>\n</VALUE.REFARRAY>\n");
}

TEST(XmlValue, AnObjectIsEscapedXml) {
    EXPECT_EQ(value(CIMValue(CIMInstance(CIMName("C")))),
              "|<VALUE>&lt;INSTANCE CLASSNAME=&quot;C&quot; &gt;&#10;&lt;/INSTANCE&gt;&#10;"
              "</VALUE>\n");
}

TEST(XmlPath, AnInstanceNameHasItsKeysByType) {
    EXPECT_EQ(
        xml(Xml::appendInstanceName, CIMObjectPath("C.b=TRUE,n=5,r=\"D.k=\\\"v\\\"\",s=\"a<b\"")),
        "|<INSTANCENAME CLASSNAME=\"C\">\n"
        "<KEYBINDING NAME=\"b\">\n<KEYVALUE VALUETYPE=\"boolean\">TRUE</KEYVALUE>\n"
        "</KEYBINDING>\n"
        "<KEYBINDING NAME=\"n\">\n<KEYVALUE VALUETYPE=\"numeric\">5</KEYVALUE>\n"
        "</KEYBINDING>\n"
        "<KEYBINDING NAME=\"r\">\n<VALUE.REFERENCE>\n<INSTANCENAME CLASSNAME=\"D\">\n"
        "<KEYBINDING NAME=\"k\">\n<KEYVALUE VALUETYPE=\"string\">v</KEYVALUE>\n"
        "</KEYBINDING>\n</INSTANCENAME>\n</VALUE.REFERENCE>\n</KEYBINDING>\n"
        "<KEYBINDING NAME=\"s\">\n<KEYVALUE VALUETYPE=\"string\">a&lt;b</KEYVALUE>\n"
        "</KEYBINDING>\n</INSTANCENAME>\n");
}

static const char* const localNamespace = "<LOCALNAMESPACEPATH>\n<NAMESPACE NAME=\"root\"/>\n"
                                          "<NAMESPACE NAME=\"x\"/>\n</LOCALNAMESPACEPATH>\n";

TEST(XmlPath, FormsWithNamespaceAndHost) {
    const CIMObjectPath path("//h:1/root/x:C");
    const std::string local(localNamespace), name = "<INSTANCENAME CLASSNAME=\"C\">\n"
                                                    "</INSTANCENAME>\n";
    const std::string space = "<NAMESPACEPATH>\n<HOST>h:1</HOST>\n" + local + "</NAMESPACEPATH>\n";
    EXPECT_EQ(xml(Xml::appendLocalNamespacePath, path.getNameSpace()), "|" + local);
    EXPECT_EQ(xml(Xml::appendLocalInstancePath, path),
              "|<LOCALINSTANCEPATH>\n" + local + name + "</LOCALINSTANCEPATH>\n");
    EXPECT_EQ(xml(Xml::appendInstancePath, path),
              "|<INSTANCEPATH>\n" + space + name + "</INSTANCEPATH>\n");
    EXPECT_EQ(xml(Xml::appendClassName, path.getClassName()), "|<CLASSNAME NAME=\"C\"/>\n");
    EXPECT_EQ(xml(Xml::appendLocalClassPath, path),
              "|<LOCALCLASSPATH>\n" + local + "<CLASSNAME NAME=\"C\"/>\n</LOCALCLASSPATH>\n");
    EXPECT_EQ(xml(Xml::appendClassPath, path),
              "|<CLASSPATH>\n" + space + "<CLASSNAME NAME=\"C\"/>\n</CLASSPATH>\n");
}

TEST(XmlPath, AReferenceHasTheFormOfItsPath) {
    const auto inner = [](const char* path) {
        return xml(Xml::appendValueReference, CIMObjectPath(path)).substr(19);
    };
    EXPECT_EQ(inner("C.k=1").find("<INSTANCENAME"), 0u);
    EXPECT_EQ(inner("root:C.k=1").find("<LOCALINSTANCEPATH>"), 0u);
    EXPECT_EQ(inner("//h/root:C.k=1").find("<INSTANCEPATH>"), 0u);
}

TEST(XmlQualifier, WritesTheFlavorsThatAreNotTheDefault) {
    const CIMName q("Q");
    const CIMValue x(String("v"));
    const auto written = [&](const CIMFlavor& flavor, bool propagated) {
        return xml(Xml::appendQualifier, CIMConstQualifier(q, x, flavor, propagated));
    };
    const std::string end = ">\n<VALUE>v</VALUE>\n</QUALIFIER>\n";
    EXPECT_EQ(written(CIMFlavor::DEFAULTS, false), "|<QUALIFIER NAME=\"Q\" TYPE=\"string\"" + end);
    EXPECT_EQ(written(CIMFlavor::NONE, false),
              "|<QUALIFIER NAME=\"Q\" TYPE=\"string\" OVERRIDABLE=\"false\" TOSUBCLASS=\"false\"" +
                  end);
    EXPECT_EQ(written(CIMFlavor::DEFAULTS + CIMFlavor::TRANSLATABLE, true),
              "|<QUALIFIER NAME=\"Q\" TYPE=\"string\" PROPAGATED=\"true\" TRANSLATABLE=\"true\"" +
                  end);
}

// An instance with a property of each form.
static CIMInstance sample() {
    CIMInstance i(CIMName("C"));
    i.addQualifier(CIMQualifier(CIMName("Q"), CIMValue(Boolean(true)), CIMFlavor::DEFAULTS));
    CIMProperty id(CIMName("Id"), CIMValue(String("x")), 0, CIMName(), CIMName("Base"), true);
    id.addQualifier(CIMQualifier(CIMName("Key"), CIMValue(Boolean(true)), CIMFlavor::DEFAULTS));
    i.addProperty(id);
    i.addProperty(CIMProperty(CIMName("Null"), CIMValue(CIMTYPE_UINT8, false)));
    i.addProperty(CIMProperty(CIMName("Array"), CIMValue(Array<Uint8>(1, 7))));
    i.addProperty(CIMProperty(CIMName("Ref"), CIMValue(CIMTYPE_REFERENCE, false), 0, CIMName("D")));
    i.addProperty(CIMProperty(CIMName("Emb"), CIMValue(CIMInstance(CIMName("D")))));
    return i;
}

TEST(XmlInstance, WritesEverythingByDefault) {
    EXPECT_EQ(
        xml(Xml::appendInstance, sample(), Xml::Parts()),
        "|<INSTANCE CLASSNAME=\"C\" >\n"
        "<QUALIFIER NAME=\"Q\" TYPE=\"boolean\">\n<VALUE>TRUE</VALUE>\n</QUALIFIER>\n"
        "<PROPERTY NAME=\"Id\"  CLASSORIGIN=\"Base\" PROPAGATED=\"true\" TYPE=\"string\">\n"
        "<QUALIFIER NAME=\"Key\" TYPE=\"boolean\">\n<VALUE>TRUE</VALUE>\n</QUALIFIER>\n"
        "<VALUE>x</VALUE>\n</PROPERTY>\n"
        "<PROPERTY NAME=\"Null\"  TYPE=\"uint8\">\n</PROPERTY>\n"
        "<PROPERTY.ARRAY NAME=\"Array\"  TYPE=\"uint8\">\n<VALUE.ARRAY>\n<VALUE>7</VALUE>\n"
        "</VALUE.ARRAY>\n</PROPERTY.ARRAY>\n"
        "<PROPERTY.REFERENCE NAME=\"Ref\"  REFERENCECLASS=\"D\">\n</PROPERTY.REFERENCE>\n"
        "<PROPERTY NAME=\"Emb\"  TYPE=\"string\" EmbeddedObject=\"instance\" "
        "EMBEDDEDOBJECT=\"instance\">\n"
        "<VALUE>&lt;INSTANCE CLASSNAME=&quot;D&quot; &gt;&#10;&lt;/INSTANCE&gt;&#10;</VALUE>\n"
        "</PROPERTY>\n"
        "</INSTANCE>\n");
}

TEST(XmlInstance, LeavesQualifiersAndOriginOut) {
    Xml::Parts parts;
    parts.qualifiers = false;
    parts.classOrigin = false;
    const std::string out = xml(Xml::appendInstance, sample(), parts);
    EXPECT_EQ(out.find("QUALIFIER"), std::string::npos);
    EXPECT_EQ(out.find("CLASSORIGIN"), std::string::npos);
    EXPECT_NE(out.find("PROPAGATED"), std::string::npos);
}

TEST(XmlInstance, TakesThePropertiesOfTheListInItsOrderWithTheirOwnSpelling) {
    Array<CIMName> names;
    for (const char* name : {"NULL", "missing", "id"}) {
        names.append(CIMName(name));
    }
    Xml::Parts parts;
    parts.qualifiers = false;
    parts.classOrigin = false;
    parts.properties = CIMPropertyList(names);
    EXPECT_EQ(xml(Xml::appendInstance, sample(), parts),
              "|<INSTANCE CLASSNAME=\"C\" >\n"
              "<PROPERTY NAME=\"Null\"  TYPE=\"uint8\">\n</PROPERTY>\n"
              "<PROPERTY NAME=\"Id\"  PROPAGATED=\"true\" TYPE=\"string\">\n<VALUE>x</VALUE>\n"
              "</PROPERTY>\n</INSTANCE>\n");
    parts.properties = CIMPropertyList(Array<CIMName>());
    EXPECT_EQ(xml(Xml::appendInstance, sample(), parts),
              "|<INSTANCE CLASSNAME=\"C\" >\n</INSTANCE>\n");
}

TEST(XmlInstance, TakesThePropertiesOfALongListAsOfAShortOne) {
    const auto withList = [](const std::vector<std::string>& list) {
        Array<CIMName> names;
        for (const std::string& name : list) {
            names.append(CIMName(name.c_str()));
        }
        Xml::Parts parts;
        parts.properties = CIMPropertyList(names);
        return xml(Xml::appendInstance, sample(), parts);
    };
    std::vector<std::string> list = {"NULL", "id", "null"};
    const std::string expected = withList(list);
    for (int i = 0; i < 100; ++i) {
        list.insert(list.begin() + i % 4, "No" + std::to_string(i));
    }
    EXPECT_EQ(withList(list), expected);
}

TEST(XmlClass, WritesSuperclassMethodsAndParameters) {
    CIMClass c(CIMName("C"), CIMName("Base"));
    c.addProperty(CIMProperty(CIMName("p"), CIMValue(CIMTYPE_STRING, false)));
    CIMMethod m(CIMName("M"), CIMTYPE_UINT32, CIMName("C"), true);
    m.addParameter(CIMParameter(CIMName("x"), CIMTYPE_STRING));
    m.addParameter(CIMParameter(CIMName("xs"), CIMTYPE_STRING, true, 3));
    m.addParameter(CIMParameter(CIMName("r"), CIMTYPE_REFERENCE, false, 0, CIMName("D")));
    m.addParameter(CIMParameter(CIMName("rs"), CIMTYPE_REFERENCE, true, 0, CIMName("D")));
    c.addMethod(m);
    EXPECT_EQ(xml(Xml::appendClass, CIMConstClass(c), Xml::Parts()),
              "|<CLASS NAME=\"C\"  SUPERCLASS=\"Base\" >\n"
              "<PROPERTY NAME=\"p\"  TYPE=\"string\">\n</PROPERTY>\n"
              "<METHOD NAME=\"M\" TYPE=\"uint32\" CLASSORIGIN=\"C\" PROPAGATED=\"true\">\n"
              "<PARAMETER NAME=\"x\" TYPE=\"string\">\n</PARAMETER>\n"
              "<PARAMETER.ARRAY NAME=\"xs\" TYPE=\"string\" ARRAYSIZE=\"3\">\n</PARAMETER.ARRAY>\n"
              "<PARAMETER.REFERENCE NAME=\"r\" REFERENCECLASS=\"D\">\n</PARAMETER.REFERENCE>\n"
              "<PARAMETER.REFARRAY NAME=\"rs\" REFERENCECLASS=\"D\">\n</PARAMETER.REFARRAY>\n"
              "</METHOD>\n</CLASS>\n");
}

TEST(XmlInstance, NamesMayHaveOtherThanAsciiLetters) {
    CIMInstance instance(CIMName("Caf\xC3\xA9"));
    instance.addProperty(CIMProperty(CIMName("\xC3\x84"), CIMValue(String("a b"))));
    EXPECT_EQ(xml(Xml::appendInstance, instance, Xml::Parts()),
              "|<INSTANCE CLASSNAME=\"Caf\xC3\xA9\" >\n"
              "<PROPERTY NAME=\"\xC3\x84\"  TYPE=\"string\">\n<VALUE>a b</VALUE>\n</PROPERTY>\n"
              "</INSTANCE>\n");
}

TEST(XmlObject, IsWrittenAsWhatItIs) {
    EXPECT_EQ(xml(Xml::appendObject, CIMConstObject(CIMClass(CIMName("C"))), Xml::Parts()),
              "|<CLASS NAME=\"C\" >\n</CLASS>\n");
    EXPECT_EQ(xml(Xml::appendObject, CIMConstObject(CIMInstance(CIMName("C"))), Xml::Parts()),
              "|<INSTANCE CLASSNAME=\"C\" >\n</INSTANCE>\n");
}

TEST(XmlParamValue, HasItsTypeIfItIsTyped) {
    EXPECT_EQ(xml(Xml::appendParamValue, CIMParamValue("p", CIMValue(Uint8(5)))),
              "|<PARAMVALUE NAME=\"p\" PARAMTYPE=\"uint8\">\n<VALUE>5</VALUE>\n</PARAMVALUE>\n");
    EXPECT_EQ(xml(Xml::appendParamValue, CIMParamValue("a<b", CIMValue(Uint8(5)), false)),
              "|<PARAMVALUE NAME=\"a&lt;b\">\n<VALUE>5</VALUE>\n</PARAMVALUE>\n");
    EXPECT_EQ(xml(Xml::appendParamValue, CIMParamValue("p", CIMValue(CIMTYPE_REFERENCE, true))),
              "|<PARAMVALUE NAME=\"p\" PARAMTYPE=\"reference\">\n</PARAMVALUE>\n");
}

TEST(XmlParamValue, ReturnValueHasItsType) {
    EXPECT_EQ(xml(Xml::appendReturnValue, CIMValue(Uint32(42))),
              "|<RETURNVALUE PARAMTYPE=\"uint32\">\n<VALUE>42</VALUE>\n</RETURNVALUE>\n");
    EXPECT_EQ(xml(Xml::appendReturnValue, CIMValue(CIMInstance(CIMName("C")))),
              "|<RETURNVALUE PARAMTYPE=\"string\" EmbeddedObject=\"instance\" "
              "EMBEDDEDOBJECT=\"instance\">\n<VALUE>&lt;INSTANCE CLASSNAME=&quot;C&quot; "
              "&gt;&#10;&lt;/INSTANCE&gt;&#10;</VALUE>\n</RETURNVALUE>\n");
}
