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

} // namespace
} // namespace array
