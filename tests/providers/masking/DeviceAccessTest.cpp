#include "providers/masking/DeviceAccess.h"

#include <gtest/gtest.h>

using namespace Pegasus;

namespace {

TEST(DeviceAccessTest, ReadWriteAndReadOnlyHaveAnAccessCode) {
    EXPECT_EQ(accessCode(2), 0u);
    EXPECT_EQ(accessCode(3), 1u);
}

TEST(DeviceAccessTest, NoOtherValueHasAnAccessCode) {
    for (const int value : {0, 1, 4, 5, 65535}) {
        EXPECT_EQ(accessCode(static_cast<Uint16>(value)), std::nullopt) << value;
    }
}

TEST(DeviceAccessTest, EachAccessCodeHasAValue) {
    EXPECT_EQ(deviceAccess(0), 2);
    EXPECT_EQ(deviceAccess(1), 3);
}

TEST(DeviceAccessTest, AnyOtherCodeIsNoAccess) {
    for (const Uint32 code : {2u, noAccessCode, 4u, 0x00010000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(deviceAccess(code), 4) << code;
    }
}

} // namespace
