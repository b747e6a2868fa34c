#include "server/auth/PasswordHash.h"

#include <gtest/gtest.h>

namespace smisd::test {
namespace {

TEST(PasswordHash, FitsItsPasswordOnly) {
    const std::string hash = hashPassword("correct horse");
    EXPECT_TRUE(verifyPassword(hash, "correct horse"));
    EXPECT_FALSE(verifyPassword(hash, "correct horsf"));
    EXPECT_FALSE(verifyPassword(hash, ""));
    EXPECT_FALSE(verifyPassword(hash, std::string("correct horse\0", 14)));
}

TEST(PasswordHash, IsSaltedAndMemoryHard) {
    const std::string hash = hashPassword("x");
    EXPECT_NE(hash, hashPassword("x"));
    EXPECT_TRUE(hash.starts_with("$argon2id$v=19$m=65536,")) << hash;
    EXPECT_TRUE(isPasswordHash(hash));
}

TEST(PasswordHash, OtherTextIsNone) {
    for (const char* text : {"", "x", "secret", "$1$salt$hash", "$argon2id$"}) {
        EXPECT_FALSE(isPasswordHash(text)) << text;
        EXPECT_FALSE(verifyPassword(text, text)) << text;
    }
    EXPECT_FALSE(isPasswordHash(std::string(1000, 'x')));
}

} // namespace
} // namespace smisd::test
