#include "server/operation/Printable.h"

#include <string>

#include <gtest/gtest.h>

namespace smisd::test {
namespace {

TEST(Printable, LeavesTextAlone) {
    for (const std::string text :
         {"", "plain {}%v \\ \"", "Zürich 東京 \U0001F600", "\u00A0\u00AD"}) {
        EXPECT_EQ(printable(text), text);
    }
}

TEST(Printable, EscapesControlsAndMarksOfDirection) {
    const struct {
        std::string text;
        std::string expected;
    } rows[] = {
        {std::string("a\0b", 3), "a\\u0000b"},
        {"a\nb\r\tc", "a\\u000Ab\\u000D\\u0009c"},
        {"\x1B[31m\x1F \x7F", "\\u001B[31m\\u001F \\u007F"},
        {"\u0080\u009B\u009F", "\\u0080\\u009B\\u009F"},
        {"\u061C\u200E\u200F", "\\u061C\\u200E\\u200F"},
        {"\u2028\u2029\u202A\u202E", "\\u2028\\u2029\\u202A\\u202E"},
        {"\u2066\u2069", "\\u2066\\u2069"},
        {"\u200D\u2010\u202F\u2065\u206A", "\u200D\u2010\u202F\u2065\u206A"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(printable(row.text), row.expected);
    }
}

TEST(Printable, ReplacesWhatIsNoUtf8) {
    EXPECT_EQ(printable("a\x9B\xFF z\xE2\x80"), "a\uFFFD\uFFFD z\uFFFD\uFFFD");
    EXPECT_EQ(printable("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD"); // a surrogate
}

} // namespace
} // namespace smisd::test
