#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;
using testing::StartsWith;

TEST(StringUtf8, CharactersOfEachLengthBecomeUtf16) {
    const String s("a\xC3\xA9\xE2\x82\xAC");
    ASSERT_EQ(s.size(), 3u);
    EXPECT_EQ(Uint16(s[0]), 'a');
    EXPECT_EQ(Uint16(s[1]), 0xE9);
    EXPECT_EQ(Uint16(s[2]), 0x20AC);
}

TEST(StringUtf8, CharactersBeyondTheBmpBecomePairsAndComeBack) {
    const String s("\xF0\x9F\x98\x80");
    ASSERT_EQ(s.size(), 2u);
    EXPECT_EQ(Uint16(s[0]), 0xD83D);
    EXPECT_EQ(Uint16(s[1]), 0xDE00);
    EXPECT_EQ(utf8(s), "\xF0\x9F\x98\x80");
}

TEST(StringUtf8, TheFirstAndLastCharacterOfEachLengthComeBack) {
    for (const char* text : {"\x01", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBD",
                             "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(utf8(String(text)), text);
    }
}

TEST(StringUtf8, AnEncodedSurrogateBecomesTheReplacementCharacter) {
    const String s("\xED\xA0\x80");
    ASSERT_EQ(s.size(), 1u);
    EXPECT_EQ(Uint16(s[0]), 0xFFFD);
}

TEST(StringUtf8, ALoneSurrogateGivesItsRawForm) {
    const Char16 high[] = {Uint16(0xD800), Uint16(0x41)};
    EXPECT_EQ(utf8(String(high, 2)), "\xED\xA0\x80"
                                     "A");
    const Char16 low(Uint16(0xDC00));
    EXPECT_EQ(utf8(String(&low, 1)), "\xED\xB0\x80");
}

struct Malformed {
    const char* text;
    const char* index;
};

class StringUtf8Malformed : public testing::TestWithParam<Malformed> {};

TEST_P(StringUtf8Malformed, ThrowsWithTheIndexOfTheSequence) {
    EXPECT_THAT(messageOf([] { String s(GetParam().text); }),
                StartsWith(std::string("The byte sequence starting at index ") + GetParam().index +
                           " is not valid UTF-8 encoding"));
}

INSTANTIATE_TEST_SUITE_P(Sequences, StringUtf8Malformed,
                         testing::Values(Malformed{"\xFF", "0"}, Malformed{"ab\xFF", "2"},
                                         Malformed{"ab\x80 cd", "2"},        // no lead byte
                                         Malformed{"ab\xC3", "2"},           // truncated
                                         Malformed{"\xE2\x82", "0"},         // truncated
                                         Malformed{"\xF0\x9F\x98", "0"},     // truncated
                                         Malformed{"\xC3\x28", "0"},         // no continuation
                                         Malformed{"x\xE2\x28\xA1", "1"},    // no continuation
                                         Malformed{"\xC0\x80", "0"},         // overlong
                                         Malformed{"\xE0\x80\x80", "0"},     // overlong
                                         Malformed{"\xF0\x80\x80\x80", "0"}, // overlong
                                         Malformed{"\xF4\x90\x80\x80", "0"}, // beyond U+10FFFF
                                         Malformed{"\xC3\xA9\xFE", "2"}));   // counted in bytes

TEST(StringUtf8, CStringOwnsItsTextAndCopiesIt) {
    EXPECT_EQ(static_cast<const char*>(CString()), nullptr);
    EXPECT_EQ(static_cast<const char*>(CString(CString())), nullptr);
    CString a = String("abc").getCString();
    CString b(a);
    CString c;
    c = b;
    a = String("other").getCString();
    EXPECT_STREQ(b, "abc");
    EXPECT_STREQ(c, "abc");
    EXPECT_STREQ(a, "other");
    EXPECT_NE(static_cast<const char*>(b), static_cast<const char*>(c));
}

TEST(StringUtf8, StreamWritesLatin1BytesAndEscapesTheRest) {
    std::ostringstream os;
    os << String("a\xC3\xA9\xE2\x82\xAC\0z", 8);
    EXPECT_EQ(os.str(), "a\xE9\\x20AC\\x0000z");
}
