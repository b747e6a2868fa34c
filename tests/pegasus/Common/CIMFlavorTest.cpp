#include <Pegasus/Common/CIMFlavor.h>
#include <gtest/gtest.h>

using namespace Pegasus;

TEST(CIMFlavor, DefaultIsNone) {
    EXPECT_TRUE(CIMFlavor().equal(CIMFlavor::NONE));
    EXPECT_EQ(CIMFlavor().toString(), "");
}

TEST(CIMFlavor, EnableOverrideIsOverridable) {
    EXPECT_TRUE(CIMFlavor::ENABLEOVERRIDE.equal(CIMFlavor::OVERRIDABLE));
}

TEST(CIMFlavor, DefaultsAreOverridableAndToSubclass) {
    EXPECT_TRUE(CIMFlavor::DEFAULTS.equal(CIMFlavor::OVERRIDABLE + CIMFlavor::TOSUBCLASS));
    EXPECT_EQ(CIMFlavor::DEFAULTS.toString(), "OVERRIDABLE TOSUBCLASS");
}

TEST(CIMFlavor, AddRemoveAndHasWorkAsASet) {
    CIMFlavor flavor;
    flavor.addFlavor(CIMFlavor::TOINSTANCE);
    flavor.addFlavor(CIMFlavor::TRANSLATABLE);
    EXPECT_TRUE(flavor.hasFlavor(CIMFlavor::TOINSTANCE));
    EXPECT_TRUE(flavor.hasFlavor(CIMFlavor::TOINSTANCE + CIMFlavor::TRANSLATABLE));
    EXPECT_FALSE(flavor.hasFlavor(CIMFlavor::TOINSTANCE + CIMFlavor::RESTRICTED));
    EXPECT_TRUE(flavor.hasFlavor(CIMFlavor::NONE));
    flavor.removeFlavor(CIMFlavor::TOINSTANCE);
    EXPECT_TRUE(flavor.equal(CIMFlavor::TRANSLATABLE));
}

TEST(CIMFlavor, ToStringJoinsTheWordsWithBlanks) {
    EXPECT_EQ(CIMFlavor::DISABLEOVERRIDE.toString(), "DISABLEOVERRIDE");
    EXPECT_EQ((CIMFlavor::TRANSLATABLE + CIMFlavor::RESTRICTED).toString(),
              "TRANSLATABLE RESTRICTED");
}
