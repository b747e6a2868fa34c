#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;
using testing::StartsWith;

namespace smisd {
namespace {

class EnumerationOperationsTest : public DispatchTest {
protected:
    Lines enumerate(const char* className) {
        return run(EnumerateInstances{.nameSpace = testNamespace, .className = CIMName(className)});
    }

    Lines names(const char* className) {
        return run(EnumerateInstanceNames{testNamespace, CIMName(className)});
    }
};

TEST_F(EnumerationOperationsTest, EachRegisteredClassFromTheRequestedOneDownIsAsked) {
    EXPECT_THAT(enumerate("Test_Element"),
                ElementsAre("named Test_Everything.Id=\"1\" | "
                            "//test.host/root/test:Test_Everything -qualifiers -origin list=null",
                            "named Test_Special.Id=\"1\" | "
                            "//test.host/root/test:Test_Special -qualifiers -origin list=null"));
    EXPECT_THAT(names("Test_Element"),
                ElementsAre("name Test_Everything.Id=\"//test.host/root/test:Test_Everything\"",
                            "name Test_Special.Id=\"//test.host/root/test:Test_Special\""));
}

TEST_F(EnumerationOperationsTest, ALeafClassIsAskedAlone) {
    EXPECT_THAT(names("Test_Special"),
                ElementsAre("name Test_Special.Id=\"//test.host/root/test:Test_Special\""));
}

TEST_F(EnumerationOperationsTest, TheRequestedClassKeepsTheClientsSpelling) {
    EXPECT_THAT(names("test_SPECIAL"),
                ElementsAre("name test_SPECIAL.Id=\"//test.host/root/test:test_SPECIAL\""));
}

TEST_F(EnumerationOperationsTest, FlagsAndPropertyListReachEveryProvider) {
    EXPECT_THAT(run(EnumerateInstances{testNamespace, CIMName("Test_Element"), true, false, true,
                                       true, list({"extra", "Id"})}),
                ElementsAre("named Test_Everything.Id=\"1\" | "
                            "//test.host/root/test:Test_Everything +qualifiers +origin "
                            "list=[extra,Id]",
                            "named Test_Special.Id=\"1\" | "
                            "//test.host/root/test:Test_Special +qualifiers +origin "
                            "list=[extra,Id]"));
}

TEST_F(EnumerationOperationsTest, OfALongPropertyListProvidersGetWhatTheirClassHas) {
    Array<CIMName> names;
    for (const char* name : {"extra", "Seen"}) {
        for (int i = 0; i < 100; ++i) {
            names.append(CIMName((std::string(name) + std::to_string(i)).c_str()));
        }
        names.append(CIMName(name));
    }
    EXPECT_THAT(run(EnumerateInstances{testNamespace, CIMName("Test_Element"), true, false, false,
                                       false, CIMPropertyList(names)}),
                ElementsAre("named Test_Everything.Id=\"1\" | "
                            "//test.host/root/test:Test_Everything -qualifiers -origin "
                            "list=[Seen]",
                            "named Test_Special.Id=\"1\" | "
                            "//test.host/root/test:Test_Special -qualifiers -origin "
                            "list=[extra,Seen]"));
}

TEST_F(EnumerationOperationsTest, WithoutDeepInheritanceOnlyTheRequestedClassesPropertiesAreShown) {
    EXPECT_THAT(run(EnumerateInstances{.nameSpace = testNamespace,
                                       .className = CIMName("Test_Element"),
                                       .deepInheritance = false}),
                ElementsAre("limit Id Seen",
                            "named Test_Everything.Id=\"1\" | "
                            "//test.host/root/test:Test_Everything -qualifiers -origin "
                            "list=[Id,Seen]",
                            "named Test_Special.Id=\"1\" | "
                            "//test.host/root/test:Test_Special -qualifiers -origin "
                            "list=[Id,Seen]"));
}

TEST_F(EnumerationOperationsTest, WithoutDeepInheritanceAPropertyListStandsAsItIs) {
    EXPECT_THAT(run(EnumerateInstances{testNamespace, CIMName("Test_Special"), false, true, false,
                                       false, list({"extra"})}),
                ElementsAre("named Test_Special.Id=\"1\" | "
                            "//test.host/root/test:Test_Special -qualifiers -origin "
                            "list=[extra]"));
}

TEST_F(EnumerationOperationsTest, ARefusalAmongAnswersIsNoError) {
    EXPECT_THAT(enumerate("Test_Group"), ElementsAre(StartsWith("named Test_Giving.")));
    EXPECT_THAT(names("Test_Group"), ElementsAre(StartsWith("name Test_Giving.")));
}

TEST_F(EnumerationOperationsTest, RefusalsAloneAreReported) {
    EXPECT_THAT(enumerate("Test_Refusing"), ElementsAre("error 7 Scripted::enumerateInstances"));
    EXPECT_THAT(names("Test_Refusing"), ElementsAre("error 7 Scripted::enumerateInstanceNames"));
}

TEST_F(EnumerationOperationsTest, AnyOtherErrorIsTheAnswer) {
    EXPECT_THAT(enumerate("Test_Risky"), ElementsAre("error 1 failed after one"));
    EXPECT_THAT(names("Test_Risky"), ElementsAre("error 1 failed after one"));
}

TEST_F(EnumerationOperationsTest, LongAnswersAreWhole) {
    const Lines lines = enumerate("Test_Many");
    ASSERT_THAT(lines, SizeIs(250));
    EXPECT_THAT(lines.back(), StartsWith("named Test_Many.Id=\"250\""));
}

TEST_F(EnumerationOperationsTest, AnInstanceWithoutPathIsPassedOn) {
    EXPECT_THAT(enumerate("Test_Pathless"), ElementsAre("named Test_Pathless"));
}

TEST_F(EnumerationOperationsTest, AnUnknownNamespaceIsNamed) {
    EXPECT_THAT(
        run(EnumerateInstances{.nameSpace = unknownNamespace, .className = CIMName("Test_Many")}),
        ElementsAre("error 3 root/unknown"));
    EXPECT_THAT(run(EnumerateInstanceNames{unknownNamespace, CIMName("Test_Many")}),
                ElementsAre("error 3 root/unknown"));
}

TEST_F(EnumerationOperationsTest, AnUnknownClassIsNamedAlsoIfItIsRegistered) {
    for (const char* className : {"Test_Nowhere", "Test_Missing"}) {
        EXPECT_THAT(enumerate(className), ElementsAre("error 5 " + std::string(className)));
        EXPECT_THAT(names(className), ElementsAre("error 5 " + std::string(className)));
    }
}

TEST_F(EnumerationOperationsTest, AClassWithoutProvidersIsNamed) {
    const auto expected =
        ElementsAre("error 7 No provider or repository defined for class Test_Unserved.");
    EXPECT_THAT(enumerate("Test_Unserved"), expected);
    EXPECT_THAT(names("Test_Unserved"), expected);
}

} // namespace
} // namespace smisd
