#include "server/http/HttpMessage.h"

#include <gtest/gtest.h>

namespace smisd::test {
namespace {

TEST(PercentEncoded, KeepsUnreservedCharacters) {
    EXPECT_EQ(percentEncoded("aZ09-_.!~*'()"), "aZ09-_.!~*'()");
    EXPECT_EQ(percentEncoded("a b/\"\r\n"), "a%20b%2F%22%0D%0A");
    EXPECT_EQ(percentEncoded("\xC3\xA9"), "%C3%A9");
}

TEST(PercentDecoded, TakesDigitsInAnyCase) {
    EXPECT_EQ(percentDecoded("root%2Ftest%3aC"), "root/test:C");
    EXPECT_EQ(percentDecoded("plain text"), "plain text");
    EXPECT_EQ(percentDecoded(""), "");
}

TEST(PercentDecoded, RefusesBrokenSequences) {
    for (const char* text : {"%", "%2", "%2x", "%x2", "a%-1", "% 1", "%+1"}) {
        EXPECT_EQ(percentDecoded(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace smisd::test
