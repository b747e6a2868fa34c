#include "server/schema/Schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace smisd {
namespace {

// A
//   B
//     D
//   C
// Link (Left A, Right C), Sub : Link, Other (Left D, Right D), Single (Left A)
class SchemaTest : public testing::Test {
protected:
    SchemaTest() {
        declare("A", nullptr);
        declare("B", "A");
        declare("C", "A");
        declare("D", "B");
        associate("Link", nullptr, "A", "C");
        declare("Sub", "Link");
        associate("Other", nullptr, "D", "D");
        associate("Single", nullptr, "A", nullptr);
    }

    void declare(const char* name, const char* superclass) {
        schema.declare(CIMClass(CIMName(name), superclass ? CIMName(superclass) : CIMName()));
    }

    void associate(const char* name, const char* superclass, const char* left, const char* right) {
        CIMClass link(CIMName(name), superclass ? CIMName(superclass) : CIMName());
        link.addQualifier(
            CIMQualifier(CIMName("Association"), CIMValue(Boolean(true)), CIMFlavor::TOSUBCLASS));
        const CIMValue none(CIMTYPE_REFERENCE, false);
        link.addProperty(CIMProperty(CIMName("Left"), none, 0, CIMName(left)));
        if (right) {
            link.addProperty(CIMProperty(CIMName("Right"), none, 0, CIMName(right)));
        }
        schema.declare(link);
    }

    static std::string text(const CIMName& name) {
        return std::string(name.getString().getCString());
    }

    static std::vector<std::string> texts(const std::vector<CIMName>& names) {
        std::vector<std::string> result;
        for (const CIMName& name : names) {
            result.push_back(text(name));
        }
        return result;
    }

    std::vector<std::string> subclasses(const char* name, bool deep) const {
        return texts(schema.subclasses(name ? CIMName(name) : CIMName(), deep));
    }

    // "association fromRole toClass toRole"
    std::vector<std::string> linksFrom(const char* name) const {
        std::vector<std::string> result;
        for (const Link& link : schema.linksFrom(CIMName(name))) {
            result.push_back(text(link.association) + " " + text(link.fromRole) + " " +
                             text(link.toClass) + " " + text(link.toRole));
        }
        return result;
    }

    Schema schema;
};

TEST_F(SchemaTest, ClassesAreFoundWithoutRegardToCase) {
    ASSERT_NE(schema.findClass(CIMName("a")), nullptr);
    EXPECT_EQ(schema.findClass(CIMName("a"))->getClassName().getString(), String("A"));
    EXPECT_EQ(schema.findClass(CIMName("Z")), nullptr);
}

TEST_F(SchemaTest, SubclassesAreListedDirectlyOrDeep) {
    EXPECT_THAT(subclasses("a", false), ElementsAre("B", "C"));
    EXPECT_THAT(subclasses("A", true), ElementsAre("B", "D", "C"));
    EXPECT_THAT(subclasses("D", true), IsEmpty());
    EXPECT_THAT(subclasses("Z", true), IsEmpty());
}

TEST_F(SchemaTest, TheNullNameHasTheRootsAsSubclasses) {
    EXPECT_THAT(subclasses(nullptr, false), ElementsAre("A", "Link", "Other", "Single"));
    EXPECT_THAT(subclasses(nullptr, true),
                ElementsAre("A", "B", "D", "C", "Link", "Sub", "Other", "Single"));
}

TEST_F(SchemaTest, AClassIsItselfAndItsAncestors) {
    EXPECT_TRUE(schema.isA(CIMName("D"), CIMName("d")));
    EXPECT_TRUE(schema.isA(CIMName("d"), CIMName("A")));
    EXPECT_FALSE(schema.isA(CIMName("A"), CIMName("D")));
    EXPECT_FALSE(schema.isA(CIMName("C"), CIMName("B")));
    EXPECT_FALSE(schema.isA(CIMName("Z"), CIMName("A")));
}

TEST_F(SchemaTest, LinksLeadFromAClassOrAnAncestorOfIt) {
    EXPECT_THAT(linksFrom("A"), ElementsAre("Link Left C Right", "Sub Left C Right"));
    EXPECT_THAT(linksFrom("C"), ElementsAre("Link Left C Right", "Link Right A Left",
                                            "Sub Left C Right", "Sub Right A Left"));
    EXPECT_THAT(linksFrom("D"), ElementsAre("Link Left C Right", "Sub Left C Right",
                                            "Other Left D Right", "Other Right D Left"));
    EXPECT_THAT(linksFrom("Z"), IsEmpty());
}

} // namespace
} // namespace smisd
