#include "server/operation/Utf8.h"
#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace smisd {
namespace {

class ClassOperationsTest : public DispatchTest {
protected:
    CIMClass get(GetClass operation) {
        operation.nameSpace = testNamespace;
        RecordingSink sink;
        run(operation, sink);
        return sink.classes.at(0);
    }

    static std::string properties(const CIMClass& cimClass) {
        std::string result;
        for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i) {
            const CIMConstProperty property = cimClass.getProperty(i);
            result += (i ? " " : "") + toUtf8(property.getName().getString());
            if (!property.getClassOrigin().isNull()) {
                result += "@" + toUtf8(property.getClassOrigin().getString());
            }
            result += property.getPropagated() ? "+" : "";
        }
        return result;
    }

    Lines names(const char* className, bool deep) {
        return run(
            EnumerateClassNames{testNamespace, className ? CIMName(className) : CIMName(), deep});
    }
};

TEST_F(ClassOperationsTest, GetClassShowsLocalFeaturesWithQualifiersByDefault) {
    const CIMClass found = get({.className = CIMName("test_everything")});
    EXPECT_EQ(found.getClassName().getString(), String("Test_Everything"));
    EXPECT_EQ(properties(found), "number text numbers when");
    EXPECT_EQ(found.getMethodCount(), 4U);
    const CIMConstProperty text = found.getProperty(1);
    EXPECT_NE(text.findQualifier(CIMName("Write")), PEG_NOT_FOUND);
    EXPECT_EQ(text.getValue(), CIMValue(String("default")));
}

TEST_F(ClassOperationsTest, GetClassShowsInheritedFeaturesAndOriginsOnRequest) {
    const CIMClass found =
        get({.className = CIMName("Test_Special"), .localOnly = false, .includeClassOrigin = true});
    EXPECT_EQ(properties(found),
              "Id@Test_Element+ Seen@Test_Element+ number@Test_Everything+ text@Test_Everything+ "
              "numbers@Test_Everything+ when@Test_Everything+ extra@Test_Special");
    EXPECT_EQ(found.getMethod(0).getClassOrigin(), CIMName("Test_Everything"));
    EXPECT_TRUE(CIMConstMethod(found.getMethod(0)).getPropagated());
}

TEST_F(ClassOperationsTest, GetClassLeavesQualifiersOutOnRequest) {
    const CIMClass found =
        get({.className = CIMName("Test_SubLink"), .localOnly = false, .includeQualifiers = false});
    EXPECT_EQ(found.getQualifierCount(), 0U);
    EXPECT_EQ(found.getProperty(0).getQualifierCount(), 0U);
    const CIMClass methods =
        get({.className = CIMName("Test_Everything"), .includeQualifiers = false});
    EXPECT_EQ(methods.getMethod(0).getParameter(0).getQualifierCount(), 0U);
}

TEST_F(ClassOperationsTest, APropertyListKeepsTheOrderOfTheClassAndTheMethods) {
    const CIMClass found = get({.className = CIMName("Test_Everything"),
                                .localOnly = false,
                                .propertyList = list({"TEXT", "Id", "nowhere"})});
    EXPECT_EQ(properties(found), "Id+ text");
    EXPECT_EQ(found.getMethodCount(), 4U);
    EXPECT_EQ(properties(get({.className = CIMName("Test_Everything"), .propertyList = list({})})),
              "");
}

TEST_F(ClassOperationsTest, TheSchemaStaysAsItIs) {
    CIMClass found = get({.className = CIMName("Test_Everything"), .localOnly = false});
    found.getProperty(0).setClassOrigin(CIMName("Changed"));
    found.removeProperty(1);
    EXPECT_EQ(properties(get({.className = CIMName("Test_Everything"),
                              .localOnly = false,
                              .includeClassOrigin = true,
                              .propertyList = list({"Id", "Seen"})})),
              "Id@Test_Element+ Seen@Test_Element+");
}

TEST_F(ClassOperationsTest, SubclassesAreEnumeratedDirectlyOrDeep) {
    EXPECT_THAT(names("Test_Element", false), ElementsAre("class Test_Everything"));
    EXPECT_THAT(names("Test_Element", true),
                ElementsAre("class Test_Everything", "class Test_Special"));
    EXPECT_THAT(names("Test_Special", true), IsEmpty());
}

TEST_F(ClassOperationsTest, WithoutAClassTheRootsAreEnumerated) {
    const Lines roots = names(nullptr, false);
    EXPECT_THAT(roots, Contains("class Test_Element"));
    EXPECT_THAT(roots, testing::Not(Contains("class Test_Everything")));
    EXPECT_THAT(names(nullptr, true), Contains("class Test_Special"));
}

TEST_F(ClassOperationsTest, EnumerateClassesShowsEachAsGetClassDoes) {
    RecordingSink sink;
    run(EnumerateClasses{testNamespace, CIMName("Test_Element"), true, false, false, true}, sink);
    ASSERT_THAT(sink.lines, ElementsAre("class Test_Everything", "class Test_Special"));
    EXPECT_EQ(properties(sink.classes[1]),
              "Id@Test_Element+ Seen@Test_Element+ number@Test_Everything+ text@Test_Everything+ "
              "numbers@Test_Everything+ when@Test_Everything+ extra@Test_Special");
    EXPECT_EQ(sink.classes[0].getProperty(0).getQualifierCount(), 0U);
}

TEST_F(ClassOperationsTest, QualifierDeclarationsAreGivenByNameOrAll) {
    EXPECT_THAT(run(GetQualifier{testNamespace, CIMName("kEY")}), ElementsAre("qualifier Key"));
    const Lines all = run(EnumerateQualifiers{testNamespace});
    EXPECT_THAT(all, SizeIs(11));
    EXPECT_THAT(all, Contains("qualifier Key"));
}

TEST_F(ClassOperationsTest, WhatIsUnknownIsNamed) {
    EXPECT_THAT(run(GetClass{.nameSpace = testNamespace, .className = CIMName("Test_Nowhere")}),
                ElementsAre("error 6 Test_Nowhere"));
    EXPECT_THAT(
        run(EnumerateClasses{.nameSpace = testNamespace, .className = CIMName("Test_Nowhere")}),
        ElementsAre("error 5 Test_Nowhere"));
    EXPECT_THAT(names("Test_Nowhere", false), ElementsAre("error 5 Test_Nowhere"));
    EXPECT_THAT(run(GetQualifier{testNamespace, CIMName("Nowhere")}),
                ElementsAre("error 6 Nowhere"));
}

TEST_F(ClassOperationsTest, AnUnknownNamespaceIsNamed) {
    const auto expected = ElementsAre("error 3 root/unknown");
    EXPECT_THAT(run(GetClass{.nameSpace = unknownNamespace, .className = CIMName("X")}), expected);
    EXPECT_THAT(run(EnumerateClasses{.nameSpace = unknownNamespace}), expected);
    EXPECT_THAT(run(EnumerateClassNames{.nameSpace = unknownNamespace}), expected);
    EXPECT_THAT(run(GetQualifier{unknownNamespace, CIMName("Key")}), expected);
    EXPECT_THAT(run(EnumerateQualifiers{unknownNamespace}), expected);
}

} // namespace
} // namespace smisd
