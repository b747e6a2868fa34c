#include "server/schema/MofReader.h"

#include <Pegasus/Common/CIMDateTime.h>
#include <gtest/gtest.h>

#include "tests/server/schema/TemporaryMof.h"

using namespace Pegasus;

namespace smisd {
namespace {

const char* const qualifiers = R"(
Qualifier Association : boolean = false, Scope(association), Flavor(DisableOverride);
Qualifier Description : string = null, Scope(any), Flavor(Translatable);
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride);
Qualifier In : boolean = true, Scope(parameter), Flavor(DisableOverride);
Qualifier Out : boolean = false, Scope(parameter), Flavor(DisableOverride);
Qualifier MaxLen : uint32 = null, Scope(property, method, parameter);
Qualifier Values : string[], Scope(property, method, parameter), Flavor(Translatable);
Qualifier Version : string = null, Scope(class, association), Flavor(Restricted);
)";

class MofReaderTest : public testing::Test {
protected:
    const Schema& read(const std::string& text) {
        readMof(files.write("test.mof", qualifiers + text), CIMNamespaceName("root/test"),
                repository);
        return *repository.find(CIMNamespaceName("root/test"));
    }

    CIMClass classOf(const std::string& text) {
        const CIMClass* found = read(text).findClass(CIMName("X"));
        EXPECT_NE(found, nullptr);
        return *found;
    }

    // The default of the only property of "class X { <declaration> }".
    CIMValue valueOf(const std::string& declaration) {
        return classOf("class X {" + declaration + "};").getProperty(0).getValue();
    }

    TemporaryMof files;
    Repository repository;
};

String text(const char* utf8) {
    return String(utf8);
}

TEST_F(MofReaderTest, PropertiesHaveTheDeclaredTypes) {
    const CIMClass cimClass = classOf(R"(class X {
        boolean a; uint8 b; sint8 c; uint16 d; sint16 e; uint32 f; sint32 g; uint64 h; sint64 i;
        real32 j; real64 k; char16 l; string m; datetime n; };)");
    const CIMType expected[] = {CIMTYPE_BOOLEAN, CIMTYPE_UINT8,   CIMTYPE_SINT8,  CIMTYPE_UINT16,
                                CIMTYPE_SINT16,  CIMTYPE_UINT32,  CIMTYPE_SINT32, CIMTYPE_UINT64,
                                CIMTYPE_SINT64,  CIMTYPE_REAL32,  CIMTYPE_REAL64, CIMTYPE_CHAR16,
                                CIMTYPE_STRING,  CIMTYPE_DATETIME};
    ASSERT_EQ(cimClass.getPropertyCount(), std::size(expected));
    for (Uint32 i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(cimClass.getProperty(i).getType(), expected[i]) << i;
        EXPECT_TRUE(cimClass.getProperty(i).getValue().isNull()) << i;
    }
}

TEST_F(MofReaderTest, KeywordsAndTypesIgnoreCase) {
    const CIMClass cimClass = classOf("CLASS X { UINT32 a = NULL; Boolean b = True; };");
    EXPECT_EQ(cimClass.getProperty(0).getType(), CIMTYPE_UINT32);
    EXPECT_EQ(cimClass.getProperty(1).getValue(), CIMValue(Boolean(true)));
}

TEST_F(MofReaderTest, NamesMayBeginWithKeywords) {
    const CIMClass cimClass = classOf("class X { string classOf; uint8 stringent; };");
    EXPECT_EQ(cimClass.getProperty(0).getName(), CIMName("classOf"));
    EXPECT_EQ(cimClass.getProperty(1).getName(), CIMName("stringent"));
}

TEST_F(MofReaderTest, ArraysHaveAnySizeOrAFixedOne) {
    const CIMClass cimClass = classOf("class X { uint8 a[]; uint8 b[3]; };");
    EXPECT_TRUE(cimClass.getProperty(0).isArray());
    EXPECT_EQ(cimClass.getProperty(0).getArraySize(), 0U);
    EXPECT_TRUE(cimClass.getProperty(1).isArray());
    EXPECT_EQ(cimClass.getProperty(1).getArraySize(), 3U);
}

TEST_F(MofReaderTest, IntegersAreDecimalHexadecimalOctalOrBinary) {
    EXPECT_EQ(valueOf("uint16 a = 65535;"), CIMValue(Uint16(65535)));
    repository = Repository();
    EXPECT_EQ(valueOf("uint16 a = 0xFFff;"), CIMValue(Uint16(65535)));
    repository = Repository();
    EXPECT_EQ(valueOf("uint16 a = 017;"), CIMValue(Uint16(15)));
    repository = Repository();
    EXPECT_EQ(valueOf("uint16 a = 101b;"), CIMValue(Uint16(5)));
    repository = Repository();
    EXPECT_EQ(valueOf("uint16 a = +7;"), CIMValue(Uint16(7)));
    repository = Repository();
    EXPECT_EQ(valueOf("sint8 a = -128;"), CIMValue(Sint8(-128)));
    repository = Repository();
    EXPECT_EQ(valueOf("uint8 a = 0x0b;"), CIMValue(Uint8(11)));
    repository = Repository();
    EXPECT_EQ(valueOf("uint64 a = 18446744073709551615;"),
              CIMValue(Uint64(18446744073709551615ULL)));
}

TEST_F(MofReaderTest, RealsHaveAPointAndMayHaveAnExponent) {
    EXPECT_EQ(valueOf("real64 a = -1.5e+3;"), CIMValue(Real64(-1500)));
    repository = Repository();
    EXPECT_EQ(valueOf("real32 a = .5;"), CIMValue(Real32(0.5)));
    repository = Repository();
    EXPECT_EQ(valueOf("real32 a = 0.25;"), CIMValue(Real32(0.25)));
}

TEST_F(MofReaderTest, StringsAreJoinedAndTheirEscapesResolved) {
    EXPECT_EQ(valueOf(R"(string a = "one " // a comment between
                                "two\n" /* and another */ "\"\\\'\t\b\r\f";)"),
              CIMValue(text("one two\n\"\\'\t\b\r\f")));
    repository = Repository();
    EXPECT_EQ(valueOf(R"(string a = "\x41\xe9\X20ACzz";)"),
              CIMValue(text("A\xC3\xA9\xE2\x82\xACzz")));
    repository = Repository();
    EXPECT_EQ(valueOf("string a = \"\xC3\xA9\";"), CIMValue(text("\xC3\xA9")));
    repository = Repository();
    EXPECT_EQ(valueOf(R"(string a = "";)"), CIMValue(String()));
}

TEST_F(MofReaderTest, CharactersAndDatesHaveLiterals) {
    EXPECT_EQ(valueOf("char16 a = 'x';"), CIMValue(Char16('x')));
    repository = Repository();
    EXPECT_EQ(valueOf(R"(char16 a = '\'';)"), CIMValue(Char16('\'')));
    repository = Repository();
    EXPECT_EQ(valueOf(R"(datetime a = "00000000000500.000000:000";)"),
              CIMValue(CIMDateTime(text("00000000000500.000000:000"))));
}

TEST_F(MofReaderTest, ListsAreArrayValues) {
    Array<Uint16> numbers;
    numbers.append(1);
    numbers.append(2);
    EXPECT_EQ(valueOf("uint16 a[] = {1, 2};"), CIMValue(numbers));
    repository = Repository();
    EXPECT_EQ(valueOf("uint16 a[] = {};"), CIMValue(Array<Uint16>()));
}

TEST_F(MofReaderTest, CommentsStandAnywhere) {
    EXPECT_EQ(classOf("class /* the */ X // class\n { /* ; */ uint8 // type\n a /**/ ; } /***/ ;")
                  .getPropertyCount(),
              1U);
}

TEST_F(MofReaderTest, QualifiersTakeTypeAndFlavorFromTheirDeclaration) {
    const CIMClass cimClass = classOf(R"(
        [Version("1.2"), Description("a " "class")] class X {
            [Key, MaxLen(64), Values {"a", "b"}] string Id; };)");
    ASSERT_EQ(cimClass.getQualifierCount(), 2U);
    EXPECT_EQ(cimClass.getQualifier(0).getValue(), CIMValue(text("1.2")));
    EXPECT_TRUE(cimClass.getQualifier(0).getFlavor().hasFlavor(CIMFlavor::RESTRICTED));
    EXPECT_FALSE(cimClass.getQualifier(0).getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_EQ(cimClass.getQualifier(1).getValue(), CIMValue(text("a class")));
    EXPECT_TRUE(cimClass.getQualifier(1).getFlavor().hasFlavor(CIMFlavor::TRANSLATABLE));
    const CIMConstProperty id = cimClass.getProperty(0);
    ASSERT_EQ(id.getQualifierCount(), 3U);
    EXPECT_EQ(id.getQualifier(0).getValue(), CIMValue(Boolean(true)));
    EXPECT_FALSE(id.getQualifier(0).getFlavor().hasFlavor(CIMFlavor::OVERRIDABLE));
    EXPECT_EQ(id.getQualifier(1).getValue(), CIMValue(Uint32(64)));
    EXPECT_EQ(id.getQualifier(2).getValue().getArraySize(), 2U);
}

TEST_F(MofReaderTest, AQualifierWithoutValueIsTrueOrNull) {
    const CIMClass cimClass = classOf("class X { [Key, MaxLen] string Id; };");
    EXPECT_EQ(cimClass.getProperty(0).getQualifier(0).getValue(), CIMValue(Boolean(true)));
    EXPECT_TRUE(cimClass.getProperty(0).getQualifier(1).getValue().isNull());
    EXPECT_EQ(cimClass.getProperty(0).getQualifier(1).getType(), CIMTYPE_UINT32);
}

TEST_F(MofReaderTest, AUseOfAQualifierMayChangeItsFlavor) {
    const CIMClass cimClass =
        classOf(R"(class X { [MaxLen(5) : Restricted DisableOverride] string a; };)");
    const CIMFlavor flavor = cimClass.getProperty(0).getQualifier(0).getFlavor();
    EXPECT_FALSE(flavor.hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_FALSE(flavor.hasFlavor(CIMFlavor::OVERRIDABLE));
}

TEST_F(MofReaderTest, QualifierDeclarationsHaveDefaultScopeAndFlavor) {
    const QualifierDeclaration* in = read("").findQualifier(CIMName("in"));
    ASSERT_NE(in, nullptr);
    EXPECT_EQ(in->name.getString(), text("In"));
    EXPECT_EQ(in->value, CIMValue(Boolean(true)));
    EXPECT_TRUE(in->scope.onParameter);
    EXPECT_FALSE(in->scope.onProperty);
    EXPECT_TRUE(in->flavor.hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_FALSE(in->flavor.hasFlavor(CIMFlavor::OVERRIDABLE));
    const QualifierScope any = repository.find(CIMNamespaceName("root/test"))
                                   ->findQualifier(CIMName("Description"))
                                   ->scope;
    EXPECT_TRUE(any.onClass && any.onAssociation && any.onReference && any.onProperty &&
                any.onMethod && any.onParameter && any.onIndication);
}

TEST_F(MofReaderTest, MethodsHaveParametersInOrder) {
    const CIMClass cimClass = classOf(R"(class X {
        sint32 Do([In] string Name, [In(false), Out] X REF Made, [In, Out] X REF All[], uint8 n[2]);
        uint32 Nothing(); };)");
    ASSERT_EQ(cimClass.getMethodCount(), 2U);
    const CIMConstMethod method = cimClass.getMethod(0);
    EXPECT_EQ(method.getType(), CIMTYPE_SINT32);
    ASSERT_EQ(method.getParameterCount(), 4U);
    EXPECT_EQ(method.getParameter(0).getName(), CIMName("Name"));
    EXPECT_EQ(method.getParameter(1).getType(), CIMTYPE_REFERENCE);
    EXPECT_EQ(method.getParameter(1).getReferenceClassName(), CIMName("X"));
    EXPECT_FALSE(method.getParameter(1).isArray());
    EXPECT_EQ(method.getParameter(1).getQualifier(0).getValue(), CIMValue(Boolean(false)));
    EXPECT_EQ(method.getParameter(2).getType(), CIMTYPE_REFERENCE);
    EXPECT_TRUE(method.getParameter(2).isArray());
    EXPECT_EQ(method.getParameter(3).getArraySize(), 2U);
    EXPECT_EQ(cimClass.getMethod(1).getParameterCount(), 0U);
}

TEST_F(MofReaderTest, AssociationsHaveReferences) {
    const CIMClass cimClass = classOf(R"(class A { [Key] string Id; };
        [Association] class X { [Key] A REF Left; [Key] A REF Right; };)");
    EXPECT_TRUE(cimClass.isAssociation());
    EXPECT_EQ(cimClass.getProperty(1).getType(), CIMTYPE_REFERENCE);
    EXPECT_EQ(cimClass.getProperty(1).getReferenceClassName(), CIMName("A"));
}

TEST_F(MofReaderTest, InstancesTakeTypesFromTheirClass) {
    const Schema& schema = read(R"(
        class X { [Key] string Id; uint16 Kinds[]; uint8 n; };
        instance of x { id = "one"; KINDS = {2, 5}; n = NULL; };
        instance of X { Id = "two"; };)");
    ASSERT_EQ(schema.instances().size(), 2U);
    const CIMInstance one = schema.instances()[0];
    EXPECT_EQ(one.getClassName().getString(), text("X"));
    ASSERT_EQ(one.getPropertyCount(), 3U);
    EXPECT_EQ(one.getProperty(0).getName().getString(), text("Id"));
    EXPECT_EQ(one.getProperty(0).getValue(), CIMValue(text("one")));
    EXPECT_EQ(one.getProperty(1).getValue().getType(), CIMTYPE_UINT16);
    EXPECT_EQ(one.getProperty(1).getValue().getArraySize(), 2U);
    EXPECT_TRUE(one.getProperty(2).getValue().isNull());
}

TEST_F(MofReaderTest, IncludesAreRelativeToTheirFile) {
    std::filesystem::create_directory(files.folder / "sub");
    files.write("sub/a.mof", "#pragma include(\"b.mof\")\nclass A { };");
    files.write("sub/b.mof", "class B { };");
    const Schema& schema = read("#pragma include (\"sub/a.mof\")\nclass X : A { };");
    EXPECT_NE(schema.findClass(CIMName("B")), nullptr);
    EXPECT_NE(schema.findClass(CIMName("X")), nullptr);
}

TEST_F(MofReaderTest, APragmaNamesTheNamespaceToTheEndOfItsFile) {
    files.write("other.mof", "#pragma namespace(\"root/other\")\nclass A { };");
    read("#pragma include(\"other.mof\")\n#pragma locale(\"en_US\")\nclass B { };\n"
         "#pragma namespace (\"root/third\") class C { };");
    EXPECT_NE(repository.find(CIMNamespaceName("root/other"))->findClass(CIMName("A")), nullptr);
    EXPECT_NE(repository.find(CIMNamespaceName("root/test"))->findClass(CIMName("B")), nullptr);
    EXPECT_NE(repository.find(CIMNamespaceName("root/third"))->findClass(CIMName("C")), nullptr);
}

TEST_F(MofReaderTest, AByteOrderMarkAndLineEndsOfAnySystemAreAccepted) {
    readMof(files.write("bom.mof", "\xEF\xBB\xBF// dos\r\nclass X {\r\n};\r\n"),
            CIMNamespaceName("root/test"), repository);
    EXPECT_NE(repository.find(CIMNamespaceName("root/test"))->findClass(CIMName("X")), nullptr);
}

} // namespace
} // namespace smisd
