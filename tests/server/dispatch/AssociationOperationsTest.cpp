#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::ElementsAre;

namespace smisd {
namespace {

class AssociationOperationsTest : public DispatchTest {
protected:
    Lines associatorNames(const char* className, const char* associationClass,
                          const char* id = "a") {
        return run(AssociatorNames{.nameSpace = testNamespace,
                                   .objectName = path(className, id),
                                   .assocClass = nameOf(associationClass)});
    }

    Lines referenceNames(const char* className, const char* resultClass) {
        return run(ReferenceNames{.nameSpace = testNamespace,
                                  .objectName = path(className, "a"),
                                  .resultClass = nameOf(resultClass)});
    }

    // The first operation of each kind with these arguments.
    std::vector<Operation> each(const CIMNamespaceName& nameSpace, const char* className,
                                const char* associationClass) {
        const CIMObjectPath source = path(className, "a");
        const CIMName association = nameOf(associationClass);
        return {
            Associators{.nameSpace = nameSpace, .objectName = source, .assocClass = association},
            AssociatorNames{
                .nameSpace = nameSpace, .objectName = source, .assocClass = association},
            References{.nameSpace = nameSpace, .objectName = source, .resultClass = association},
            ReferenceNames{
                .nameSpace = nameSpace, .objectName = source, .resultClass = association}};
    }

    static CIMName nameOf(const char* text) { return text ? CIMName(text) : CIMName(); }
};

TEST_F(AssociationOperationsTest, ObjectsAreCompletedWithHostAndNamespace) {
    const std::string seen = " | //test.host/root/test:Test_Everything.Id=\"a\" Test_SubLink "
                             "Test_Unserved A B +qualifiers +origin list=[Id]";
    EXPECT_THAT(run(Associators{testNamespace, path("Test_Everything", "a"), false,
                                CIMName("test_sublink"), CIMName("Test_Unserved"), String("A"),
                                String("B"), true, true, list({"Id"})}),
                ElementsAre("object //test.host/root/test:Test_Element.Id=\"bare\"" + seen,
                            "object //test.host/root/other:Test_Element.Id=\"namespace\"" + seen,
                            "object //other.host/root/other:Test_Element.Id=\"full\"" + seen));
}

TEST_F(AssociationOperationsTest, PathsAreCompletedWithHostAndNamespace) {
    EXPECT_THAT(associatorNames("Test_Everything", "Test_SubLink"),
                ElementsAre("path //test.host/root/test:Test_Element.Id=\"bare\"",
                            "path //test.host/root/other:Test_Element.Id=\"namespace\"",
                            "path //other.host/root/other:Test_Element.Id=\"full\""));
}

TEST_F(AssociationOperationsTest, ReferencesAreCompletedWithHostAndNamespace) {
    const std::string seen = " | //test.host/root/test:Test_Everything.Id=\"a\" Test_SubLink A "
                             "-qualifiers -origin list=null";
    EXPECT_THAT(run(References{.nameSpace = testNamespace,
                               .objectName = path("Test_Everything", "a"),
                               .resultClass = CIMName("Test_SubLink"),
                               .role = String("A")}),
                ElementsAre("object //test.host/root/test:Test_SubLink.Id=\"bare\"" + seen,
                            "object //test.host/root/other:Test_SubLink.Id=\"namespace\"" + seen,
                            "object //other.host/root/other:Test_SubLink.Id=\"full\"" + seen));
    EXPECT_THAT(referenceNames("Test_Everything", "Test_SubLink"),
                ElementsAre("path //test.host/root/test:Test_SubLink.Id=\"bare\"",
                            "path //test.host/root/other:Test_SubLink.Id=\"namespace\"",
                            "path //other.host/root/other:Test_SubLink.Id=\"full\""));
}

// The association classes that the provider of `references` was called with, once each.
std::vector<std::string> askedFor(const std::vector<std::string>& lines) {
    std::vector<std::string> result;
    for (const std::string& line : lines) {
        const size_t start = line.find("Test_", line.rfind('/'));
        const std::string name = line.substr(start, line.find('.', start) - start);
        if (result.empty() || result.back() != name) {
            result.push_back(name);
        }
    }
    return result;
}

TEST_F(AssociationOperationsTest, EachRegisteredAssociationFromTheSourceIsAskedByItsOwnName) {
    EXPECT_THAT(askedFor(referenceNames("Test_Everything", nullptr)),
                ElementsAre("Test_Link", "Test_SubLink"));
}

TEST_F(AssociationOperationsTest, AnAssociationStandsForItsSubclassesToo) {
    EXPECT_THAT(askedFor(referenceNames("Test_Everything", "test_LINK")),
                ElementsAre("Test_Link", "Test_SubLink"));
    EXPECT_THAT(askedFor(referenceNames("Test_Everything", "Test_SubLink")),
                ElementsAre("Test_SubLink"));
}

TEST_F(AssociationOperationsTest, ResultClassAndRolesPlayNoPartInRouting) {
    EXPECT_EQ(run(AssociatorNames{.nameSpace = testNamespace,
                                  .objectName = path("Test_Everything", "a"),
                                  .resultClass = CIMName("Test_Nowhere"),
                                  .role = String("nothing"),
                                  .resultRole = String("nothing")})
                  .size(),
              6U);
}

TEST_F(AssociationOperationsTest, ASourceWithoutKeysIsAnInstance) {
    EXPECT_EQ(run(AssociatorNames{.nameSpace = testNamespace,
                                  .objectName = path("Test_Everything"),
                                  .assocClass = CIMName("Test_SubLink")})
                  .size(),
              3U);
}

TEST_F(AssociationOperationsTest, ARefusalAmongAnswersIsNoError) {
    EXPECT_EQ(associatorNames("Test_Giving", nullptr).size(), 3U);
    EXPECT_EQ(referenceNames("Test_Giving", nullptr).size(), 3U);
}

TEST_F(AssociationOperationsTest, RefusalsAloneAreReported) {
    const std::vector<Operation> operations = each(testNamespace, "Test_Group", nullptr);
    EXPECT_THAT(run(operations[0]), ElementsAre("error 7 Scripted::associators"));
    EXPECT_THAT(run(operations[1]), ElementsAre("error 7 Scripted::associatorNames"));
    EXPECT_THAT(run(operations[2]), ElementsAre("error 7 Scripted::references"));
    EXPECT_THAT(run(operations[3]), ElementsAre("error 7 Scripted::referenceNames"));
}

TEST_F(AssociationOperationsTest, AnyOtherErrorIsTheAnswer) {
    EXPECT_THAT(associatorNames("Test_Everything", nullptr, "cim:1:X"), ElementsAre("error 1 X"));
}

TEST_F(AssociationOperationsTest, WithoutAProviderTheSourceClassIsNamed) {
    for (const Operation& operation : each(testNamespace, "Test_Unserved", nullptr)) {
        EXPECT_THAT(
            run(operation),
            ElementsAre("error 7 No provider or repository defined for class Test_Unserved."));
    }
    // no association, an association without provider, one that does not lead from the source
    for (const char* association : {"Test_Element", "Test_UnservedLink", "Test_RefusingLink"}) {
        for (const Operation& operation : each(testNamespace, "Test_Everything", association)) {
            EXPECT_THAT(run(operation),
                        ElementsAre("error 7 No provider or repository defined for class "
                                    "Test_Everything."));
        }
    }
}

TEST_F(AssociationOperationsTest, AnUnknownNamespaceSourceOrAssociationIsNamed) {
    for (const Operation& operation : each(unknownNamespace, "Test_Everything", nullptr)) {
        EXPECT_THAT(run(operation), ElementsAre("error 3 root/unknown"));
    }
    for (const Operation& operation : each(testNamespace, "Test_Nowhere", nullptr)) {
        EXPECT_THAT(run(operation), ElementsAre("error 4 Test_Nowhere"));
    }
    for (const Operation& operation : each(testNamespace, "Test_Everything", "Test_NoLink")) {
        EXPECT_THAT(run(operation), ElementsAre("error 4 Test_NoLink"));
    }
}

TEST_F(AssociationOperationsTest, ARoleThatIsNoLegalNameIsNamedFirst) {
    const CIMObjectPath source = path("Test_Nowhere", "a");
    const String role("a-b");
    EXPECT_THAT(run(Associators{.nameSpace = testNamespace, .objectName = source, .role = role}),
                ElementsAre("error 4 role a-b"));
    EXPECT_THAT(
        run(Associators{.nameSpace = testNamespace, .objectName = source, .resultRole = role}),
        ElementsAre("error 4 resultrole a-b"));
    EXPECT_THAT(
        run(AssociatorNames{.nameSpace = testNamespace, .objectName = source, .role = role}),
        ElementsAre("error 4 role a-b"));
    EXPECT_THAT(
        run(AssociatorNames{.nameSpace = testNamespace, .objectName = source, .resultRole = role}),
        ElementsAre("error 4 resultrole a-b"));
    EXPECT_THAT(run(References{.nameSpace = testNamespace, .objectName = source, .role = role}),
                ElementsAre("error 4 role a-b"));
    EXPECT_THAT(run(ReferenceNames{.nameSpace = testNamespace, .objectName = source, .role = role}),
                ElementsAre("error 4 role a-b"));
}

TEST_F(AssociationOperationsTest, AProviderWithoutTheInterfaceIsNotSupported) {
    EXPECT_THAT(associatorNames("Test_WrongInterface", nullptr),
                ElementsAre("error 7 Invalid provider interface."));
}

} // namespace
} // namespace smisd
