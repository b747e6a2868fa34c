#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

TEST(StringCompare, CompareOrdersByUnitsAndPutsAPrefixFirst) {
    EXPECT_EQ(String::compare("abc", "abc"), 0);
    EXPECT_LT(String::compare("abc", "abd"), 0);
    EXPECT_GT(String::compare("b", "abc"), 0);
    EXPECT_LT(String::compare("ab", "abc"), 0);
    EXPECT_GT(String::compare("abc", "ab"), 0);
    EXPECT_LT(String::compare("", "a"), 0);
    EXPECT_LT(String::compare("z", "\xC3\xA9"), 0);
}

TEST(StringCompare, CompareWithALengthLooksNoFurther) {
    EXPECT_EQ(String::compare("abcX", "abcY", 3), 0);
    EXPECT_LT(String::compare("abcX", "abcY", 4), 0);
    EXPECT_LT(String::compare("ab", "abc", 3), 0);
    EXPECT_EQ(String::compare("ab", "abc", 2), 0);
    EXPECT_EQ(String::compare("x", "y", 0), 0);
}

TEST(StringCompare, NoCaseFoldsAsciiOnly) {
    EXPECT_EQ(String::compareNoCase("aBc", "AbC"), 0);
    EXPECT_LT(String::compareNoCase("ab", "ABC"), 0);
    EXPECT_GT(String::compareNoCase("B", "a"), 0);
    EXPECT_TRUE(String::equalNoCase("Key", "kEY"));
    EXPECT_FALSE(String::equalNoCase("\xC3\xA9", "\xC3\x89"));
    EXPECT_FALSE(String::equalNoCase("[", "{"));
    EXPECT_FALSE(String::equalNoCase("ab", "abc"));
}

TEST(StringCompare, EqualIsExact) {
    EXPECT_TRUE(String::equal("abc", "abc"));
    EXPECT_FALSE(String::equal("abc", "abC"));
    EXPECT_FALSE(String::equal("abc", "abcd"));
}

TEST(StringCompare, Operators) {
    const String a("a"), b("b");
    EXPECT_TRUE(a == String("a"));
    EXPECT_TRUE(a == "a");
    EXPECT_TRUE("a" == a);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(a < b);
    EXPECT_TRUE(a <= a);
    EXPECT_TRUE(b > a);
    EXPECT_TRUE(b >= b);
    EXPECT_FALSE(b < a);
    EXPECT_TRUE(String("\xC3\xA9") == "\xC3\xA9");
}

TEST(StringCompare, FindGivesTheFirstPlace) {
    const String s("abcabc");
    EXPECT_EQ(s.find(Char16('b')), 1u);
    EXPECT_EQ(s.find(2, Char16('b')), 4u);
    EXPECT_EQ(s.find(Char16('x')), PEG_NOT_FOUND);
    EXPECT_EQ(s.find(String("cab")), 2u);
    EXPECT_EQ(s.find(String("cb")), PEG_NOT_FOUND);
    EXPECT_EQ(s.find(String("abcabcd")), PEG_NOT_FOUND);
}

TEST(StringCompare, FindFromTheEndFindsNothingAndFromBeyondThrows) {
    const String s("abc");
    EXPECT_EQ(s.find(3, Char16('a')), PEG_NOT_FOUND);
    EXPECT_THROW(s.find(4, Char16('a')), IndexOutOfBoundsException);
}

TEST(StringCompare, FindOfTheEmptyStringFindsNothing) {
    EXPECT_EQ(String("abc").find(String()), PEG_NOT_FOUND);
    EXPECT_EQ(String().find(String()), PEG_NOT_FOUND);
}

TEST(StringCompare, ReverseFindGivesTheLastPlace) {
    const String s("abcabc");
    EXPECT_EQ(s.reverseFind(Char16('a')), 3u);
    EXPECT_EQ(s.reverseFind(Char16('x')), PEG_NOT_FOUND);
    EXPECT_EQ(String().reverseFind(Char16('x')), PEG_NOT_FOUND);
}
