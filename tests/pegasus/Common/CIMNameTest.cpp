#include <string>
#include <vector>

#include <Pegasus/Common/CIMName.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

TEST(CIMName, DefaultIsNull) {
    EXPECT_TRUE(CIMName().isNull());
    EXPECT_EQ(CIMName().getString(), "");
}

TEST(CIMName, LettersUnderscoreAndUnicodeBeginANameAndDigitsContinueIt) {
    for (const char* name :
         {"a", "Z", "_", "a1", "_9", "caf\xC3\xA9", "\xC3\xA9", "\xEF\xBF\xAF"}) {
        EXPECT_TRUE(CIMName::legal(name)) << name;
    }
    for (const char* name : {"", "1a", "a-b", "a b", " a", "a.b", "a:b", "\xEF\xBF\xB0"}) {
        EXPECT_FALSE(CIMName::legal(name)) << name;
    }
}

TEST(CIMName, AnIllegalTextThrowsAndIsQuoted) {
    EXPECT_THROW(CIMName("1a"), InvalidNameException);
    EXPECT_THROW(CIMName(String("a b")), InvalidNameException);
    EXPECT_NE(messageOf<InvalidNameException>([] { CIMName name("a b"); }).find("a b"),
              std::string::npos);
}

TEST(CIMName, TheEmptyTextIsIllegalAndNotNull) {
    EXPECT_THROW(CIMName(""), InvalidNameException);
    EXPECT_THROW(CIMName{String::EMPTY}, InvalidNameException);
}

TEST(CIMName, AssignmentOfAStringValidates) {
    CIMName name("a");
    name = String("b");
    EXPECT_EQ(name.getString(), "b");
    EXPECT_THROW(name = String("1"), InvalidNameException);
    EXPECT_EQ(name.getString(), "b");
}

TEST(CIMName, KeepsItsSpellingAndComparesWithoutCase) {
    const CIMName name("DeviceID");
    EXPECT_EQ(name.getString(), "DeviceID");
    EXPECT_TRUE(name == CIMName("deviceid"));
    EXPECT_TRUE(name.equal(CIMName("DEVICEID")));
    EXPECT_TRUE(name == "deviceId");
    EXPECT_TRUE(name != CIMName("DeviceIDs"));
    EXPECT_FALSE(CIMName("\xC3\xA9") == CIMName("\xC3\x89"));
}

TEST(CIMName, NullEqualsNullOnly) {
    EXPECT_TRUE(CIMName() == CIMName());
    EXPECT_TRUE(CIMName() != CIMName("a"));
}

TEST(CIMName, ComparisonWithAnIllegalTextThrows) {
    const CIMName name("a");
    EXPECT_THROW(static_cast<void>(name == "not a name"), InvalidNameException);
}

TEST(CIMName, ClearMakesNull) {
    CIMName name("a");
    name.clear();
    EXPECT_TRUE(name.isNull());
}

TEST(CIMName, IsUntouchedByChangesOfItsText) {
    String text = CIMName("Kept").getString();
    text.append(Char16('!'));
    text[0] = Char16('k');
    EXPECT_EQ(text, "kept!");
    EXPECT_EQ(CIMName("Kept").getString(), "Kept");
}

TEST(CIMName, ThereMayBeAnyNumber) {
    std::vector<CIMName> names;
    for (int i = 0; i < 3000; ++i) {
        names.push_back(CIMName(("n" + std::to_string(i)).c_str()));
    }
    for (int i = 0; i < 3000; ++i) {
        ASSERT_EQ(utf8(names[std::size_t(i)].getString()), "n" + std::to_string(i));
    }
}

TEST(CIMNamespaceName, ElementsAreNamesJoinedBySlashes) {
    for (const char* name : {"root", "root/cimv2", "a/b/c", "root/caf\xC3\xA9", "_/x1"}) {
        EXPECT_TRUE(CIMNamespaceName::legal(name)) << name;
    }
    for (const char* name :
         {"", "/", "//a", "a//b", "a/", "a-b", "a\\b", "a b", "1a", "root/1", "root/ x"}) {
        EXPECT_FALSE(CIMNamespaceName::legal(name)) << name;
        EXPECT_THROW(CIMNamespaceName{String(name)}, InvalidNamespaceNameException) << name;
    }
}

TEST(CIMNamespaceName, OneLeadingSlashIsRemoved) {
    EXPECT_EQ(CIMNamespaceName("/root/cimv2").getString(), "root/cimv2");
    EXPECT_TRUE(CIMNamespaceName("/root/cimv2") == CIMNamespaceName("root/cimv2"));
}

TEST(CIMNamespaceName, ComparesWithoutCase) {
    EXPECT_TRUE(CIMNamespaceName("Root/CIMv2") == CIMNamespaceName("root/cimv2"));
    EXPECT_TRUE(CIMNamespaceName("root") != CIMNamespaceName("root/cimv2"));
    EXPECT_TRUE(CIMNamespaceName() == CIMNamespaceName());
    EXPECT_TRUE(CIMNamespaceName().isNull());
}

TEST(CIMNamespaceName, AssignmentOfAStringValidates) {
    CIMNamespaceName name("root");
    name = String("/other");
    EXPECT_EQ(name.getString(), "other");
    EXPECT_THROW(name = String("a b"), InvalidNamespaceNameException);
    name.clear();
    EXPECT_TRUE(name.isNull());
}
