#include "array/rules/Secret.h"

#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

TEST(Secret, HasAtMost255BytesAndNoControlCharacters) {
    EXPECT_NO_THROW(checkSecret("", "host1"));
    EXPECT_NO_THROW(checkSecret(std::string(255, 's'), "host1"));
    EXPECT_NO_THROW(checkSecret("p\xC3\xA4ssword", "host1"));
    expectFailure(ErrorCode::BadSecret,
                  "The secret of \"host1\" is refused: it has more than 255 bytes.",
                  [] { checkSecret(std::string(256, 's'), "host1"); });
    expectFailure(ErrorCode::BadSecret,
                  "The secret of \"host1\" is refused: it has control characters.",
                  [] { checkSecret("a secret\tof mine", "host1"); });
    expectFailure(ErrorCode::BadSecret, "The secret of \"host1\" is refused: it is not UTF-8.",
                  [] { checkSecret("a secret\xFF", "host1"); });
}

TEST(Secret, UnderTwelveBytesIsWeak) {
    EXPECT_FALSE(isWeakSecret(""));
    EXPECT_TRUE(isWeakSecret("x"));
    EXPECT_TRUE(isWeakSecret("12345678901"));
    EXPECT_FALSE(isWeakSecret("123456789012"));
}

} // namespace
} // namespace array
