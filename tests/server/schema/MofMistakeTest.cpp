// Every mistake in a MOF file is reported with its place and what was expected there.

#include <ostream>

#include <gtest/gtest.h>

#include "server/schema/MofReader.h"
#include "tests/server/schema/TemporaryMof.h"

using namespace Pegasus;

namespace smisd {
namespace {

struct Mistake {
    const char* name;
    const char* text;
    const char* report; // behind the name of the file and a colon
};

void PrintTo(const Mistake& mistake, std::ostream* out) {
    *out << mistake.name;
}

// Five lines before the text of each case, which so begins in line 6.
const char* const before = R"(Qualifier Association : boolean = false, Scope(association);
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride);
Qualifier MaxLen : uint32 = null, Scope(property);
Qualifier Values : string[], Scope(property, method);
class A { [Key] string Id; }; class B : A { }; [Association] class R { A REF a; };
)";

class MofMistakeTest : public testing::TestWithParam<Mistake> {};

TEST_P(MofMistakeTest, IsReportedWithPlaceAndExpectation) {
    const TemporaryMof files;
    const std::filesystem::path file =
        files.write("test.mof", before + std::string(GetParam().text));
    Repository repository;
    try {
        readMof(file, CIMNamespaceName("root/test"), repository);
        FAIL() << "no mistake was found";
    } catch (const MofError& error) {
        EXPECT_EQ(error.what(), file.string() + ":" + GetParam().report);
    }
}

const Mistake mistakes[] = {
    // Files
    {"Rubbish", "klass X { };",
     "6:1: expected a class, a qualifier declaration, an instance or a #pragma"},
    {"OpenComment", "class X { };\n/* no end", "7:10: expected '*/' before the end of the file"},
    {"QualifiersOfNothing", "[Key] uint8 x;", "6:7: expected class or instance"},
    {"PragmaWithoutName", "#pragma (\"x\")", "6:9: expected the name of a pragma"},
    {"PragmaWithoutParenthesis", "#pragma include \"x\"", "6:17: expected '('"},
    {"PragmaWithoutText", "#pragma include(x)", "6:17: expected a string"},
    {"PragmaWithoutEnd", "#pragma include(\"x\"", "6:20: expected ')'"},
    {"MissingInclude", "#pragma include(\"none.mof\")",
     "6:17: expected the name of a file that can be read, not none.mof"},
    {"IncludeOfItself", "#pragma include(\"./test.mof\")",
     "6:17: expected a file that does not include itself, not ./test.mof"},
    {"IllegalNamespace", "#pragma namespace(\"root//x\")",
     "6:19: expected the name of a namespace"},

    // Values
    {"OpenString", "class X { string a = \"abc\n\"; };",
     "6:26: expected '\"' before the end of the line"},
    {"UnknownEscape", "class X { string a = \"a\\q\"; };",
     "6:25: expected one of b t n f r \" ' \\ or x and up to four hexadecimal digits after '\\'"},
    {"InvalidUtf8", "class X { string a = \"a\xC3\x28\"; };",
     "6:24: expected '\"' before the end of the line"},
    {"EmptyCharacter", "class X { char16 a = ''; };", "6:23: expected a character"},
    {"LongCharacter", "class X { char16 a = 'ab'; };", "6:24: expected ''' after one character"},
    {"NoValue", "class X { uint8 a = ; };", "6:21: expected a value or '{'"},
    {"ListWithoutEnd", "class X { uint8 a[] = {1, 2; };", "6:28: expected a value, ',' or '}'"},
    {"ListWithCommaAtItsEnd", "class X { uint8 a[] = {1, }; };", "6:27: expected a value"},
    {"NumberOutOfRange", "class X { uint8 a = 256; };",
     "6:21: expected a value of type uint8, not 256"},
    {"NegativeUnsigned", "class X { uint8 a = -1; };",
     "6:21: expected a value of type uint8, not -1"},
    {"NoNumber", "class X { uint8 a = 12x; };", "6:21: expected a value of type uint8, not 12x"},
    {"WrongOctal", "class X { uint8 a = 08; };", "6:21: expected a value of type uint8, not 08"},
    {"TextForNumber", "class X { uint8 a = \"1\"; };",
     "6:21: expected a value of type uint8, not \"1\""},
    {"NumberForText", "class X { string a = 1; };", "6:22: expected a value of type string, not 1"},
    {"NumberForBoolean", "class X { boolean a = 1; };",
     "6:23: expected a value of type boolean, not 1"},
    {"BooleanForNumber", "class X { uint8 a = true; };",
     "6:21: expected a value of type uint8, not true"},
    {"IntegerForReal", "class X { real32 a = 1; };",
     "6:22: expected a value of type real32, not 1"},
    {"TextForDate", "class X { datetime a = \"today\"; };",
     "6:24: expected a value of type datetime, not \"today\""},
    {"DateOutOfRange", "class X { datetime a = \"20261301000000.000000+000\"; };",
     "6:24: expected a value of type datetime, not \"20261301000000.000000+000\""},
    {"ScalarForArray", "class X { uint8 a[] = 1; };",
     "6:23: expected a value of type uint8[], not 1"},
    {"ArrayForScalar", "class X { uint8 a = {1}; };",
     "6:21: expected a value of type uint8, not {1}"},
    {"WrongElement", "class X { uint8 a[] = {1,\n 300}; };",
     "7:2: expected a value of type uint8, not 300"},
    {"LongValue", "class X { uint8 a = \"0123456789012345678901234567890123456789\"; };",
     "6:21: expected a value of type uint8, not \"012345678901234567890123456789012345678..."},
    {"HugeArraySize", "class X { uint8 a[4294967296]; };",
     "6:19: expected a value of type uint32, not 4294967296"},

    // Qualifiers
    {"ListOfNoQualifiers", "[] class X { };", "6:2: expected the name of a qualifier"},
    {"CommaBehindQualifiers", "[Key, ] class X { };", "6:7: expected the name of a qualifier"},
    {"QualifierListWithoutEnd", "class X { [Key string a; };",
     "6:16: expected '(', '{', ',' or ']' after a qualifier"},
    {"QualifierWithoutValue", "class X { [MaxLen()] string a; };", "6:19: expected a value"},
    {"QualifierValueWithoutEnd", "class X { [MaxLen(1] string a; };", "6:20: expected ')'"},
    {"UseWithoutFlavor", "class X { [Key :] string a; };", "6:17: expected the name of a flavor"},
    {"UnknownFlavorOfUse", "class X { [Key : Strong] string a; };",
     "6:18: expected EnableOverride, DisableOverride, ToSubclass, Restricted or Translatable, not "
     "Strong"},
    {"UndeclaredQualifier", "class X { [Kye] string a; };",
     "6:12: expected a declared qualifier, not Kye"},
    {"QualifierOnWrongElement", "[Key] class X { };",
     "6:2: expected a qualifier for a class, not Key"},
    {"QualifierOnWrongParameter", "class X { uint8 m([Key] uint8 a); };",
     "6:20: expected a qualifier for a parameter, not Key"},
    {"WrongQualifierValue", "class X { [MaxLen(\"5\")] string a; };",
     "6:19: expected a value of type uint32, not \"5\""},
    {"ScalarForArrayQualifier", "class X { [Values(\"a\")] string a; };",
     "6:19: expected a value of type string[], not \"a\""},
    {"QualifierTwice", "class X { [Key, MaxLen(1), key] string a; };",
     "6:28: expected the qualifier key only once"},

    // Qualifier declarations
    {"DeclarationWithoutName", "Qualifier : boolean;", "6:11: expected the name of a qualifier"},
    {"DeclarationWithoutColon", "Qualifier Q boolean;", "6:13: expected ':'"},
    {"DeclarationWithoutType", "Qualifier Q : bool, Scope(any);", "6:15: expected a type"},
    {"DeclarationWithoutScope", "Qualifier Q : boolean;", "6:22: expected ',' and Scope"},
    {"DeclarationWithoutScopeWord", "Qualifier Q : boolean, Flavor(Restricted);",
     "6:24: expected Scope"},
    {"DeclarationWithoutScopeList", "Qualifier Q : boolean, Scope;", "6:29: expected '('"},
    {"EmptyScope", "Qualifier Q : boolean, Scope();", "6:30: expected the name of a scope"},
    {"ScopeWithoutEnd", "Qualifier Q : boolean, Scope(any;", "6:33: expected ',' or ')'"},
    {"UnknownScope", "Qualifier Q : boolean, Scope(klass);",
     "6:30: expected class, association, indication, property, reference, method, parameter or "
     "any, not klass"},
    {"DeclarationWithoutFlavor", "Qualifier Q : boolean, Scope(any), ;", "6:36: expected Flavor"},
    {"EmptyFlavor", "Qualifier Q : boolean, Scope(any), Flavor();",
     "6:43: expected the name of a flavor"},
    {"UnknownFlavor", "Qualifier Q : boolean, Scope(any), Flavor(Weak);",
     "6:43: expected EnableOverride, DisableOverride, ToSubclass, Restricted or Translatable, not "
     "Weak"},
    {"DeclarationWithoutEnd", "Qualifier Q : boolean, Scope(any)\nclass X { };",
     "7:1: expected ',' or ';'"},
    {"DeclaredTwice", "Qualifier key : boolean, Scope(any);",
     "6:11: expected the qualifier key to be declared only once"},

    // Classes
    {"ClassWithoutName", "class { };", "6:7: expected the name of a class"},
    {"ClassWithoutBody", "class X ;", "6:9: expected ':' or '{'"},
    {"ClassWithoutSuperclass", "class X : { };", "6:11: expected the name of the superclass"},
    {"ClassWithoutEnd", "class X { uint8 a;", "6:19: expected a property, a method or '}'"},
    {"ClassWithoutSemicolon", "class X { }\nclass Y { };", "7:1: expected ';'"},
    {"UnknownSuperclass", "class X : Y { };",
     "6:11: expected a superclass that is declared before, not Y"},
    {"ClassTwice", "class a { };", "6:7: expected the class a to be declared only once"},
    {"UnknownType", "class X { uint7 a; };",
     "6:17: expected a type, or REF after the name of a class"},
    {"QualifiersWithoutType", "class X { [Key] ; };",
     "6:17: expected the type of a property or method"},
    {"TypeWithoutName", "class X { uint8 ; };", "6:17: expected the name of a property or method"},
    {"PropertyWithoutEnd", "class X { uint8 a uint8 b; };", "6:19: expected '(', '[', '=' or ';'"},
    {"ValueWithoutEnd", "class X { uint8 a = 1 uint8 b; };", "6:23: expected ';'"},
    {"ArrayWithoutEnd", "class X { uint8 a[x]; };", "6:19: expected a size or ']'"},
    {"PropertyTwice", "class X {\n uint8 a;\n uint8 A; };", "8:8: already exists: property \"A\""},
    {"ReferenceOutsideAssociation", "class X { A REF a; };",
     "6:11: expected a reference only in an association"},
    {"ArrayOfReferences", "[Association] class X { A REF a[]; };",
     "6:32: expected no array of references in a class"},
    {"ReferenceToUnknownClass", "[Association] class X { Y REF a; };",
     "6:25: expected a class that is declared before, not Y"},
    {"OverrideWithOtherType", "class X : A { uint8 Id; };",
     "6:21: expected Id to be of type string, as in A"},
    {"OverrideWithArray", "class X : A { string Id[]; };",
     "6:22: expected Id to be of type string, as in A"},
    {"OverrideWithUnrelatedReference", "class C { }; class X : R { C REF a; };",
     "6:34: expected a to be of type A REF, as in R"},

    // Methods
    {"MethodWithoutEnd", "class X { uint8 m() uint8 a; };", "6:21: expected ';'"},
    {"ParametersWithoutEnd", "class X { uint8 m(uint8 a; };",
     "6:26: expected a parameter, ',' or ')'"},
    {"CommaBehindParameters", "class X { uint8 m(uint8 a, ); };", "6:28: expected a parameter"},
    {"ParameterWithoutType", "class X { uint8 m([Association] ); };",
     "6:33: expected the type of a parameter"},
    {"ParameterWithoutName", "class X { uint8 m(uint8); };",
     "6:24: expected the name of a parameter"},
    {"ParameterTwice", "class X { uint8 m(uint8 a, uint8 a); };",
     "6:17: already exists: parameter \"a\""},
    {"MethodTwice", "class X { uint8 m(); uint8 m(); };", "6:28: already exists: method \"m\""},

    // Instances
    {"InstanceWithoutOf", "instance A { };", "6:10: expected 'of'"},
    {"InstanceWithoutClass", "instance of { };", "6:13: expected the name of a class"},
    {"InstanceWithoutBody", "instance of A;", "6:14: expected '{'"},
    {"InstanceWithoutEnd", "instance of A { Id = \"x\";",
     "6:26: expected the name of a property or '}'"},
    {"AssignmentWithoutValue", "instance of A { Id; };", "6:19: expected '='"},
    {"AssignmentWithoutEnd", "instance of A { Id = \"x\" };", "6:26: expected ';'"},
    {"UnknownClass", "instance of Y { };", "6:13: expected a class that is declared before, not Y"},
    {"UnknownProperty", "instance of A { Name = \"x\"; };",
     "6:17: expected a property of A, not Name"},
    {"WrongType", "instance of B { Id = 5; };", "6:22: expected a value of type string, not 5"},
    {"AssignedTwice", "instance of A { Id = \"x\"; ID = \"y\"; };",
     "6:27: already exists: property \"Id\""},
};

INSTANTIATE_TEST_SUITE_P(Mof, MofMistakeTest, testing::ValuesIn(mistakes),
                         [](const testing::TestParamInfo<Mistake>& mistake) {
                             return mistake.param.name;
                         });

TEST(MofMistakes, AFileThatIsMissingIsNamed) {
    Repository repository;
    try {
        readMof("/nonexistent/x.mof", CIMNamespaceName("root/test"), repository);
        FAIL() << "no mistake was found";
    } catch (const MofError& error) {
        EXPECT_STREQ(error.what(), "/nonexistent/x.mof:1:1: expected a file that can be read: No "
                                   "such file or directory");
    }
}

TEST(MofMistakes, AMistakeInAnIncludedFileNamesThatFile) {
    const TemporaryMof files;
    const std::filesystem::path inner = files.write("inner.mof", "class X {\n  uint7 a;\n};\n");
    const std::filesystem::path outer = files.write("outer.mof", "#pragma include(\"inner.mof\")");
    Repository repository;
    try {
        readMof(outer, CIMNamespaceName("root/test"), repository);
        FAIL() << "no mistake was found";
    } catch (const MofError& error) {
        EXPECT_EQ(error.what(),
                  inner.string() + ":2:9: expected a type, or REF after the name of a class");
    }
}

} // namespace
} // namespace smisd
