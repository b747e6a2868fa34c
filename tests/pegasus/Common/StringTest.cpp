#include <new>

#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

TEST(String, DefaultAndEMPTYAreEmpty) {
    EXPECT_EQ(String().size(), 0u);
    EXPECT_EQ(String::EMPTY.size(), 0u);
    EXPECT_EQ(String(), String::EMPTY);
}

TEST(String, IsMadeFromUtf16WithAndWithoutALength) {
    const Char16 text[] = {'a', 'b', 'c', Uint16(0)};
    EXPECT_EQ(String(text), "abc");
    EXPECT_EQ(String(text, 2), "ab");
}

TEST(String, IsMadeFromThePrefixOfAnother) {
    const String abc("abc");
    EXPECT_EQ(String(abc, 2), "ab");
    EXPECT_EQ(String(abc, 3), "abc");
    EXPECT_EQ(String(abc, 0), "");
    EXPECT_THROW(String(abc, 4), IndexOutOfBoundsException);
}

TEST(String, CharsWithALengthTakeExactlyThatManyBytes) {
    const String s("ab\0cd", 5);
    EXPECT_EQ(s.size(), 5u);
    EXPECT_EQ(Uint16(s[2]), 0);
    EXPECT_EQ(Uint16(s[4]), 'd');
}

TEST(String, EmbeddedNulCountsInSizeAndCutsTheCString) {
    const String s("ab\0cd", 5);
    EXPECT_EQ(utf8(s), "ab");
    EXPECT_NE(s, "ab");
}

TEST(String, NullPointerThrows) {
    EXPECT_EQ(messageOf([] { String s(static_cast<const char*>(nullptr)); }), "null pointer");
    EXPECT_EQ(messageOf([] { String s(static_cast<const char*>(nullptr), 3); }), "null pointer");
    EXPECT_EQ(messageOf([] { String s(static_cast<const Char16*>(nullptr)); }), "null pointer");
}

TEST(String, AssignReplacesTheText) {
    const Char16 text[] = {'x', 'y', 'z', Uint16(0)};
    String s("old");
    EXPECT_EQ(s.assign(String("new")), "new");
    EXPECT_EQ(s.assign("chars"), "chars");
    EXPECT_EQ(s.assign("chars", 2), "ch");
    EXPECT_EQ(s.assign(text), "xyz");
    EXPECT_EQ(s.assign(text, 1), "x");
    EXPECT_EQ(&s.assign(s), &s);
    EXPECT_EQ(s, "x");
}

TEST(String, AppendAddsAtTheEndAndReturnsItself) {
    const Char16 text[] = {'c', 'd', 'e'};
    String s("a");
    EXPECT_EQ(&s.append(Char16('b')), &s);
    s.append(text, 2).append(String("!"));
    EXPECT_EQ(s, "abcd!");
}

TEST(String, AppendOfItselfIsSafe) {
    String s("abc");
    for (int i = 0; i < 4; ++i) {
        s.append(s);
    }
    EXPECT_EQ(s.size(), 48u);
    EXPECT_EQ(s.subString(45), "abc");
    s.append(s.getChar16Data(), 3);
    EXPECT_EQ(s.subString(48), "abc");
}

TEST(String, PlusJoins) {
    EXPECT_EQ(String("ab") + String("cd"), "abcd");
    EXPECT_EQ(String() + String(), "");
}

TEST(String, CopiesAreIndependent) {
    String a("abc");
    String b(a);
    b.append(String("d"));
    EXPECT_EQ(a, "abc");
    a[0] = Char16('x');
    EXPECT_EQ(a, "xbc");
    EXPECT_EQ(b, "abcd");
    String c;
    c = a;
    a.clear();
    EXPECT_EQ(c, "xbc");
    c.toLower();
    String d(c);
    d.remove(0, 1);
    EXPECT_EQ(c, "xbc");
    EXPECT_EQ(d, "bc");
}

TEST(String, IndexAtTheEndReadsZeroAndBeyondItThrows) {
    String s("ab");
    const String& constant = s;
    EXPECT_EQ(Uint16(s[2]), 0);
    EXPECT_EQ(Uint16(constant[2]), 0);
    EXPECT_THROW(s[3], IndexOutOfBoundsException);
    EXPECT_THROW(constant[3], IndexOutOfBoundsException);
    EXPECT_EQ(Uint16(String()[0]), 0);
}

TEST(String, SubStringClipsAndNeverThrows) {
    const String s("abcdef");
    EXPECT_EQ(s.subString(2), "cdef");
    EXPECT_EQ(s.subString(2, 3), "cde");
    EXPECT_EQ(s.subString(4, 99), "ef");
    EXPECT_EQ(s.subString(6), "");
    EXPECT_EQ(s.subString(99, 1), "");
    EXPECT_EQ(s.subString(0, 0), "");
    EXPECT_EQ(s.subString(0), "abcdef");
}

TEST(String, RemoveTakesARangeOrTheTail) {
    String s("abcdef");
    s.remove(1, 2);
    EXPECT_EQ(s, "adef");
    s.remove(2);
    EXPECT_EQ(s, "ad");
    s.remove(2);
    EXPECT_EQ(s, "ad");
}

TEST(String, RemoveBeyondTheEndThrowsAndChangesNothing) {
    String s("abc");
    EXPECT_THROW(s.remove(1, 3), IndexOutOfBoundsException);
    EXPECT_THROW(s.remove(4, 1), IndexOutOfBoundsException);
    EXPECT_EQ(s, "abc");
}

TEST(String, ClearEmpties) {
    String s("abc");
    s.clear();
    EXPECT_EQ(s.size(), 0u);
    s.append(Char16('x'));
    EXPECT_EQ(s, "x");
}

TEST(String, ReserveCapacityKeepsTheText) {
    String s("abc");
    s.reserveCapacity(1000);
    EXPECT_EQ(s, "abc");
    s.reserveCapacity(1);
    EXPECT_EQ(s, "abc");
}

TEST(String, ReserveCapacityOfAnAbsurdSizeIsBadAlloc) {
    String s("abc");
    EXPECT_THROW(s.reserveCapacity(0xFFFFFFF0), std::bad_alloc);
    EXPECT_EQ(s, "abc");
}

TEST(String, ToLowerFoldsAsciiOnly) {
    String s("ABC[\xC3\x84]xyZ");
    s.toLower();
    EXPECT_EQ(utf8(s), "abc[\xC3\x84]xyz");
}
