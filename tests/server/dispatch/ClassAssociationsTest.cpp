#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace smisd {
namespace {

class ClassAssociationsTest : public DispatchTest {
protected:
    Lines associatorNames(const char* className, AssociatorNames operation = {}) {
        operation.nameSpace = testNamespace;
        operation.objectName = path(className);
        operation.ofClass = true;
        return run(operation);
    }

    Lines referenceNames(const char* className, ReferenceNames operation = {}) {
        operation.nameSpace = testNamespace;
        operation.objectName = path(className);
        operation.ofClass = true;
        return run(operation);
    }

    static std::string line(const char* className) {
        return "path //test.host/root/test:" + std::string(className);
    }
};

TEST_F(ClassAssociationsTest, AssociatedClassesAreThoseAtTheOtherEndsOnceEach) {
    EXPECT_THAT(associatorNames("Test_Everything"),
                ElementsAre(line("Test_Element"), line("Test_Unserved")));
    EXPECT_THAT(associatorNames("Test_Unserved"), ElementsAre(line("Test_Element")));
    EXPECT_THAT(associatorNames("Test_Many"), IsEmpty());
}

TEST_F(ClassAssociationsTest, ReferencingClassesAreTheAssociationsOnceEach) {
    EXPECT_THAT(referenceNames("Test_Everything"),
                ElementsAre(line("Test_Link"), line("Test_SubLink"), line("Test_UnservedLink")));
}

TEST_F(ClassAssociationsTest, AssociationsAreRestrictedByClassWithSubclasses) {
    EXPECT_THAT(referenceNames("Test_Everything", {.resultClass = CIMName("Test_Link")}),
                ElementsAre(line("Test_Link"), line("Test_SubLink")));
    EXPECT_THAT(associatorNames("Test_Everything", {.assocClass = CIMName("Test_UnservedLink")}),
                ElementsAre(line("Test_Unserved")));
}

TEST_F(ClassAssociationsTest, ResultsAreRestrictedByClassWithSubclasses) {
    EXPECT_THAT(associatorNames("Test_Everything", {.resultClass = CIMName("Test_Element")}),
                ElementsAre(line("Test_Element")));
    EXPECT_THAT(associatorNames("Test_Everything", {.resultClass = CIMName("Test_Everything")}),
                IsEmpty());
}

TEST_F(ClassAssociationsTest, RolesAreComparedWithoutRegardToCase) {
    EXPECT_THAT(associatorNames("Test_Everything", {.role = String("a")}),
                ElementsAre(line("Test_Element")));
    EXPECT_THAT(associatorNames("Test_Everything", {.resultRole = String("a")}),
                ElementsAre(line("Test_Element"), line("Test_Unserved")));
    EXPECT_THAT(associatorNames("Test_Everything", {.role = String("c")}), IsEmpty());
    EXPECT_THAT(referenceNames("Test_Everything", {.role = String("a")}),
                ElementsAre(line("Test_Link"), line("Test_SubLink")));
}

TEST_F(ClassAssociationsTest, ClassesCarryWhatWasAskedFor) {
    RecordingSink sink;
    run(Associators{.nameSpace = testNamespace,
                    .objectName = path("Test_Unserved"),
                    .ofClass = true,
                    .includeClassOrigin = true,
                    .propertyList = list({"Seen"})},
        sink);
    ASSERT_THAT(sink.lines, ElementsAre("class //test.host/root/test:Test_Element"));
    const CIMClass& found = sink.classes[0];
    ASSERT_EQ(found.getPropertyCount(), 1U);
    EXPECT_EQ(found.getProperty(0).getName(), CIMName("Seen"));
    EXPECT_EQ(found.getProperty(0).getClassOrigin(), CIMName("Test_Element"));
}

TEST_F(ClassAssociationsTest, ReferencingClassesAreComplete) {
    RecordingSink sink;
    run(References{.nameSpace = testNamespace,
                   .objectName = path("Test_Element"),
                   .ofClass = true,
                   .resultClass = CIMName("Test_SubLink"),
                   .includeQualifiers = true},
        sink);
    ASSERT_EQ(sink.classes.size(), 1U);
    const CIMClass& found = sink.classes[0];
    EXPECT_EQ(found.getPropertyCount(), 3U);
    EXPECT_TRUE(found.isAssociation());
    EXPECT_TRUE(found.getProperty(0).getClassOrigin().isNull());
}

TEST_F(ClassAssociationsTest, AnUnknownClassIsNamed) {
    EXPECT_THAT(associatorNames("Test_Nowhere"), ElementsAre("error 4 Test_Nowhere"));
    EXPECT_THAT(associatorNames("Test_Element", {.assocClass = CIMName("Test_Nowhere")}),
                ElementsAre("error 5 Test_Nowhere"));
    EXPECT_THAT(associatorNames("Test_Element", {.resultClass = CIMName("Test_Nowhere")}),
                ElementsAre("error 5 Test_Nowhere"));
    EXPECT_THAT(referenceNames("Test_Nowhere"), ElementsAre("error 4 Test_Nowhere"));
    EXPECT_THAT(referenceNames("Test_Element", {.resultClass = CIMName("Test_Nowhere")}),
                ElementsAre("error 4 Test_Nowhere"));
}

} // namespace
} // namespace smisd
