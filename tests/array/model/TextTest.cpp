#include "array/model/Text.h"

#include <gtest/gtest.h>

namespace array {
namespace {

TEST(Text, Utf8TextsGoThroughTheEngineUnchanged) {
    for (const std::string& text :
         {std::string(), std::string("plain"), std::string("nul\0nul", 7),
          std::string("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), std::string("\xEF\xBF\xBD")}) {
        EXPECT_EQ(toUtf8(fromUtf8(text)), text);
    }
}

TEST(Text, ALoneSurrogateIsNoUtf8) {
    Pegasus::String text("a");
    text.append(Pegasus::Char16(0xD800));
    EXPECT_EQ(toUtf8(text), "a\xED\xA0\x80");
    EXPECT_FALSE(isUtf8(toUtf8(text)));
    text.append(Pegasus::Char16(0xDC00));
    EXPECT_EQ(toUtf8(text), "a\xF0\x90\x80\x80");
}

TEST(Text, KnowsWellFormedUtf8) {
    for (const char* good :
         {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(isUtf8(good)) << good;
    }
    for (const char* bad :
         {"\x80", "\xC0\x80", "\xC1\xBF", "\xC3", "\xC3\x41", "\xE0\x9F\xBF", "\xE2\x82",
          "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"}) {
        EXPECT_FALSE(isUtf8(bad)) << bad;
    }
}

TEST(Text, QuotesWhatIsPrintableAndCutsTheRest) {
    EXPECT_EQ(array::quoted("a\tb\x7F"), "\"a?b?\"");
    EXPECT_EQ(array::quoted(std::string(257, 'x')), "\"" + std::string(256, 'x') + "...\"");
}

struct Escaped {
    const char* given;
    const char* shown;
};

class EscapedText : public testing::TestWithParam<Escaped> {};

TEST_P(EscapedText, HasNothingThatATerminalActsOn) {
    EXPECT_EQ(escaped(GetParam().given), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, EscapedText,
    testing::Values(Escaped{"", ""}, Escaped{"plain \\ text\n", "plain \\ text\n"},
                    Escaped{"b\xC3\xBC"
                            "cher \xF0\x9F\x98\x80",
                            "b\xC3\xBC"
                            "cher \xF0\x9F\x98\x80"},
                    Escaped{"\x1B[2J\r\t\x7F", "\\u001B[2J\\u000D\\u0009\\u007F"},
                    Escaped{"\xC2\x9B"
                            "2J",
                            "\\u009B"
                            "2J"},
                    Escaped{"a\xE2\x80\xAE"
                            "b",
                            "a\\u202E"
                            "b"},
                    Escaped{"a\xE2\x80\x8B"
                            "b",
                            "a\\u200B"
                            "b"},
                    Escaped{"\xF3\xA0\x81\x81", "\\uDB40\\uDC41"},
                    Escaped{"a\xFF\xC3", "a\\xFF\\xC3"}));

TEST(BeginningAtEnd, IsWhatAnotherPieceMayComplete) {
    const std::string euro = "\xE2\x82\xAC";
    EXPECT_EQ(beginningAtEnd(""), 0u);
    EXPECT_EQ(beginningAtEnd("a"), 0u);
    EXPECT_EQ(beginningAtEnd("a" + euro), 0u);
    EXPECT_EQ(beginningAtEnd("a" + euro.substr(0, 1)), 1u);
    EXPECT_EQ(beginningAtEnd("a" + euro.substr(0, 2)), 2u);
    EXPECT_EQ(beginningAtEnd("a\xFF"), 0u);
    EXPECT_EQ(beginningAtEnd("a\x82"), 0u);
}

} // namespace
} // namespace array
