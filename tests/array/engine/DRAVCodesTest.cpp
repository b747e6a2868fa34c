#include "engine/DRAVCodes.h"

#include <gtest/gtest.h>

namespace Pegasus {
namespace {

TEST(DRAVDigestFromSMI, FollowsTheValueMap) {
    EXPECT_EQ(DRAVDigestFromSMI(1).code, DRAV_DIGEST_OTHER);
    EXPECT_EQ(DRAVDigestFromSMI(2).code, DRAV_DIGEST_NONE);
    EXPECT_EQ(DRAVDigestFromSMI(3).code, DRAV_DIGEST_CRC32C);
    EXPECT_EQ(DRAVDigestFromSMI(4).code, DRAV_DIGEST_NO_PREFERENCE);
}

TEST(DRAVDigestFromSMI, GivesUnknownForEveryOtherNumber) {
    for (const Uint16 number : std::initializer_list<Uint16>{0, 5, 6, 100, 65535})
        EXPECT_EQ(DRAVDigestFromSMI(number).code, DRAV_DIGEST_UNKNOWN) << number;
}

TEST(DRAVAuthSettingFromSMI, FollowsTheValueMap) {
    EXPECT_EQ(DRAVAuthSettingFromSMI(2).code, DRAV_AUTH_NONE);
    EXPECT_EQ(DRAVAuthSettingFromSMI(3).code, DRAV_AUTH_NO_AUTHENTICATION);
    EXPECT_EQ(DRAVAuthSettingFromSMI(4).code, DRAV_AUTH_SRP);
    EXPECT_EQ(DRAVAuthSettingFromSMI(5).code, DRAV_AUTH_CHAP);
    EXPECT_EQ(DRAVAuthSettingFromSMI(6).code, DRAV_AUTH_KERBEROS);
}

TEST(DRAVAuthSettingFromSMI, GivesUnknownForEveryOtherNumber) {
    for (const Uint16 number : std::initializer_list<Uint16>{0, 1, 7, 100, 65535})
        EXPECT_EQ(DRAVAuthSettingFromSMI(number).code, DRAV_AUTH_UNKNOWN) << number;
}

} // namespace
} // namespace Pegasus
