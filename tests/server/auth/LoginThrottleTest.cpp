#include "server/auth/LoginThrottle.h"

#include <string>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace smisd::test {
namespace {

LoginThrottle::Clock::time_point currentTime;

class Throttle : public testing::Test {
protected:
    LoginThrottle throttle{[] { return currentTime; }};

    // A guess that waits for its turn and is wrong; how long it waited.
    std::chrono::milliseconds guess(const std::string& address) {
        const auto wait = throttle.admit(address).value();
        currentTime += wait;
        throttle.failed(address);
        return wait;
    }
};

TEST_F(Throttle, LetsAnAddressWithoutFailuresPass) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(throttle.admit("192.0.2.1"), 0ms);
    }
}

TEST_F(Throttle, DoublesThePauseWithEachFailureUpToALimit) {
    for (const auto expected : {0s, 1s, 2s, 4s, 8s, 16s, 16s, 16s}) {
        EXPECT_EQ(guess("192.0.2.1"), expected);
    }
}

TEST_F(Throttle, LooksAtPasswordsOfOneAddressOneAfterTheOther) {
    throttle.failed("192.0.2.1");
    throttle.failed("192.0.2.1");
    EXPECT_EQ(throttle.admit("192.0.2.1"), 2s);
    EXPECT_EQ(throttle.admit("192.0.2.1"), 4s);
    EXPECT_EQ(throttle.admit("192.0.2.1"), 6s);
    EXPECT_EQ(throttle.admit("192.0.2.2"), 0s);
}

TEST_F(Throttle, TurnsAwayWhoWouldWaitForTooLong) {
    throttle.failed("192.0.2.1");
    int admitted = 0;
    while (throttle.admit("192.0.2.1")) {
        ++admitted;
    }
    EXPECT_EQ(admitted, 30);
    currentTime += 1s;
    EXPECT_EQ(throttle.admit("192.0.2.1"), 30s);
}

TEST_F(Throttle, ForgetsAfterAWhile) {
    guess("192.0.2.1");
    guess("192.0.2.1");
    currentTime += LoginThrottle::memory + 1s;
    EXPECT_EQ(throttle.admit("192.0.2.1"), 0s);
    EXPECT_EQ(guess("192.0.2.1"), 0s);
    EXPECT_EQ(guess("192.0.2.1"), 1s);
}

TEST_F(Throttle, TakesAnIpv6NetworkForOneAddress) {
    throttle.failed("2001:db8:1:2::1");
    EXPECT_EQ(throttle.admit("2001:db8:1:2:ffff::7"), 1s);
    EXPECT_EQ(throttle.admit("2001:db8:1:3::1"), 0s);
    throttle.failed("::ffff:192.0.2.1");
    EXPECT_EQ(throttle.admit("::ffff:192.0.2.2"), 0s);
}

TEST_F(Throttle, KeepsNoMoreAddressesThanItsLimit) {
    for (std::size_t i = 0; i <= LoginThrottle::mostAddresses; ++i) {
        throttle.failed("host" + std::to_string(i));
        currentTime += 1ms;
    }
    EXPECT_EQ(throttle.admit("host0"), 0s); // the oldest went
    EXPECT_GT(throttle.admit("host" + std::to_string(LoginThrottle::mostAddresses)), 900ms);
}

} // namespace
} // namespace smisd::test
