#include "server/schema/ClassView.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using testing::ElementsAre;

namespace smisd {
namespace {

CIMQualifier qualifier(const char* name, const char* value,
                       const CIMFlavor& flavor = CIMFlavor::DEFAULTS) {
    return CIMQualifier(CIMName(name), CIMValue(String(value)), flavor);
}

CIMProperty property(const char* name) {
    return CIMProperty(CIMName(name), CIMValue(CIMTYPE_STRING, false));
}

// "name value origin", and "+" if it is propagated.
template<class Element>
std::vector<std::string> qualifiersOf(const Element& element) {
    std::vector<std::string> result;
    for (Uint32 i = 0; i < element.getQualifierCount(); ++i) {
        const CIMConstQualifier one = element.getQualifier(i);
        const String text = one.getName().getString() + String("=") + one.getValue().toString();
        result.push_back(std::string(text.getCString()) + (one.getPropagated() ? "+" : ""));
    }
    return result;
}

template<class Feature>
std::string featureText(const Feature& feature) {
    const String text =
        feature.getName().getString() + String("@") + feature.getClassOrigin().getString();
    return std::string(text.getCString()) + (feature.getPropagated() ? "+" : "");
}

std::vector<std::string> propertiesOf(const CIMClass& cimClass) {
    std::vector<std::string> result;
    for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i) {
        result.push_back(featureText(cimClass.getProperty(i)));
    }
    return result;
}

std::vector<std::string> methodsOf(const CIMClass& cimClass) {
    std::vector<std::string> result;
    for (Uint32 i = 0; i < cimClass.getMethodCount(); ++i) {
        result.push_back(featureText(cimClass.getMethod(i)));
    }
    return result;
}

class InheritanceTest : public testing::Test {
protected:
    InheritanceTest() {
        top.addQualifier(qualifier("Version", "1", CIMFlavor::RESTRICTED));
        top.addQualifier(qualifier("Q1", "top"));
        top.addQualifier(qualifier("Q2", "top"));
        top.addQualifier(qualifier("Q3", "top"));
        CIMProperty a = property("a");
        a.addQualifier(qualifier("Key", "yes"));
        a.addQualifier(qualifier("Description", "top a"));
        top.addProperty(a).addProperty(property("b"));
        top.addMethod(CIMMethod(CIMName("m"), CIMTYPE_UINT32));
        top.addMethod(CIMMethod(CIMName("n"), CIMTYPE_UINT32));
        full = withInherited(top, nullptr);

        sub.addQualifier(qualifier("Q2", "sub"));
        CIMProperty b = property("A");
        b.addQualifier(qualifier("Description", "sub a"));
        sub.addProperty(property("c")).addProperty(b);
        sub.addMethod(CIMMethod(CIMName("N"), CIMTYPE_UINT32));
        result = withInherited(sub, &full);
    }

    CIMClass top{CIMName("Top")};
    CIMClass full;
    CIMClass sub{CIMName("Sub"), CIMName("Top")};
    CIMClass result;
};

TEST_F(InheritanceTest, ARootClassIsTheOriginOfItsFeatures) {
    EXPECT_THAT(propertiesOf(full), ElementsAre("a@Top", "b@Top"));
    EXPECT_THAT(methodsOf(full), ElementsAre("m@Top", "n@Top"));
}

TEST_F(InheritanceTest, InheritedFeaturesStandFirstAndArePropagated) {
    EXPECT_THAT(propertiesOf(result), ElementsAre("b@Top+", "c@Sub", "A@Top"));
    EXPECT_THAT(methodsOf(result), ElementsAre("m@Top+", "N@Top"));
}

TEST_F(InheritanceTest, FeaturesAreInheritedOverSeveralClasses) {
    const CIMClass lowest = withInherited(CIMClass(CIMName("Lowest"), CIMName("Sub")), &result);
    EXPECT_THAT(propertiesOf(lowest), ElementsAre("b@Top+", "c@Sub+", "A@Top+"));
}

TEST_F(InheritanceTest, QualifiersThatGoToSubclassesStandBeforeTheOwnOnes) {
    EXPECT_THAT(qualifiersOf(result), ElementsAre("Q3=top+", "Q1=top+", "Q2=sub"));
}

TEST_F(InheritanceTest, AnOverridingPropertyInheritsQualifiers) {
    const CIMClass& read = result;
    EXPECT_THAT(qualifiersOf(read.getProperty(read.findProperty(CIMName("a")))),
                ElementsAre("Key=yes+", "Description=sub a"));
}

TEST_F(InheritanceTest, TheArgumentsStayAsTheyAre) {
    EXPECT_THAT(propertiesOf(sub), ElementsAre("c@", "A@"));
    EXPECT_THAT(qualifiersOf(sub), ElementsAre("Q2=sub"));
    EXPECT_THAT(propertiesOf(full), ElementsAre("a@Top", "b@Top"));
    result.getProperty(0).setClassOrigin(CIMName("Changed"));
    EXPECT_THAT(propertiesOf(full), ElementsAre("a@Top", "b@Top"));
}

} // namespace
} // namespace smisd
