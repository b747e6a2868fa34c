#include "server/auth/LoginQueue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace smisd::test {
namespace {

class Queue : public testing::Test {
protected:
    LoginQueue queue;
    LoginQueue::Clock::time_point now{};

    std::optional<std::uint64_t> add(std::uint64_t number, const std::string& address,
                                     std::chrono::seconds pause = 0s) {
        return queue.add(number, address, now + pause, now);
    }

    // The next of them, in their turns.
    std::vector<std::uint64_t> next(int count) {
        std::vector<std::uint64_t> numbers;
        for (int i = 0; i < count; ++i) {
            numbers.push_back(queue.takeNext(now).value_or(0));
        }
        return numbers;
    }
};

TEST_F(Queue, OfOneAddressIsInTheOrderOfComing) {
    add(1, "192.0.2.1");
    add(2, "192.0.2.1");
    add(3, "192.0.2.1");
    EXPECT_THAT(next(4), ElementsAre(1, 2, 3, 0));
    EXPECT_EQ(queue.size(), 0U);
}

struct Turns {
    const char* name;
    std::vector<std::string> addresses; // of the logins 1, 2, ...
    std::vector<std::uint64_t> order;
};

class TurnsOf : public Queue, public testing::WithParamInterface<Turns> {};

TEST_P(TurnsOf, Addresses) {
    std::uint64_t number = 0;
    for (const std::string& address : GetParam().addresses) {
        add(++number, address);
    }
    EXPECT_EQ(next(static_cast<int>(number)), GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Queue, TurnsOf,
    testing::Values(Turns{"NetworksAlternate",
                          {"192.0.2.1", "192.0.2.1", "192.0.2.1", "198.51.100.1", "198.51.100.1"},
                          {4, 1, 5, 2, 3}},
                    Turns{"AddressesOfANetworkAlternate",
                          {"192.0.2.1", "192.0.2.1", "192.0.2.2", "192.0.2.3"},
                          {1, 3, 4, 2}},
                    Turns{"ManyAddressesOfANetworkAreOneVoice",
                          {"192.0.2.1", "192.0.2.2", "192.0.2.3", "192.0.2.4", "198.51.100.1"},
                          {5, 1, 2, 3, 4}},
                    Turns{"Ipv6NetworkOf64IsOneAddress",
                          {"2001:db8::1", "2001:db8::2", "2001:db8::3", "2001:db8:0:1::1"},
                          {1, 4, 2, 3}},
                    Turns{"Ipv6NetworkOf48IsOneVoice",
                          {"2001:db8::1", "2001:db8:0:1::1", "2001:db8:0:2::1", "2001:db8:1::1"},
                          {4, 1, 2, 3}},
                    Turns{"MappedIpv4IsIpv4",
                          {"::ffff:192.0.2.1", "::ffff:192.0.2.2", "::ffff:198.51.100.1"},
                          {3, 1, 2}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Queue, RemembersWhoHadTheLastTurn) {
    add(1, "192.0.2.1");
    EXPECT_THAT(next(1), ElementsAre(1));
    add(2, "192.0.2.1");
    add(3, "198.51.100.1");
    EXPECT_THAT(next(2), ElementsAre(3, 2));
}

TEST_F(Queue, PrefersAddressesThatHaveLoggedIn) {
    queue.succeeded("192.0.2.1");
    add(1, "198.51.100.1");
    add(2, "192.0.2.1");
    add(3, "192.0.2.1");
    EXPECT_THAT(next(3), ElementsAre(2, 3, 1));
}

// The guesser may have the address of a good client, or have a login itself.
TEST_F(Queue, PrefersNoAddressThatGuesses) {
    queue.succeeded("192.0.2.1");
    queue.failed("192.0.2.1");
    add(1, "198.51.100.1");
    add(2, "192.0.2.1");
    EXPECT_THAT(next(2), ElementsAre(1, 2));
}

TEST_F(Queue, PassesOverWhoPauses) {
    add(1, "192.0.2.1", 5s);
    add(2, "198.51.100.1", 2s);
    EXPECT_THAT(next(1), ElementsAre(0));
    EXPECT_EQ(queue.nextTurn(), now + 2s);
    now += 2s;
    EXPECT_THAT(next(2), ElementsAre(2, 0));
    now += 3s;
    EXPECT_THAT(next(2), ElementsAre(1, 0));
    EXPECT_EQ(queue.nextTurn(), std::nullopt);
}

TEST_F(Queue, GivesUpOnWhoHasWaitedForTooLong) {
    add(1, "192.0.2.1");
    add(2, "192.0.2.1", 5s);
    now += LoginQueue::longestWait + 1s;
    EXPECT_EQ(queue.takeLate(now), 1U);
    EXPECT_EQ(queue.takeLate(now), std::nullopt);
    now += 5s;
    EXPECT_EQ(queue.takeLate(now), 2U);
}

// Full

class FullQueue : public Queue {
protected:
    // Fills it with logins from 100 on; the function names the address of each.
    template<class Address>
    void fill(Address address) {
        while (queue.size() < LoginQueue::mostWaiting) {
            const std::size_t index = queue.size();
            EXPECT_EQ(add(100 + index, address(index)), std::nullopt);
        }
    }
    static constexpr std::uint64_t last = 100 + LoginQueue::mostWaiting - 1;
};

TEST_F(FullQueue, TurnsTheLastOfTheLargestCrowdAway) {
    fill([](std::size_t index) { return index == 3 ? "198.51.100.1" : "192.0.2.1"; });
    EXPECT_EQ(add(1, "192.0.2.1"), 1U);
    EXPECT_EQ(add(2, "203.0.113.1"), last);
    EXPECT_EQ(queue.size(), LoginQueue::mostWaiting);
}

TEST_F(FullQueue, CountsTheAddressesOfANetworkTogether) {
    fill([](std::size_t index) {
        return index % 2 == 0 ? "192.0.2." + std::to_string(index) : "198.51.100.1";
    });
    EXPECT_EQ(add(1, "203.0.113.1"), last); // 198.51.100.1, as often as those of 192.0.2.0/24
    EXPECT_EQ(add(2, "203.0.113.1"), last - 1);
}

TEST_F(FullQueue, TurnsWhoPausesAwayFirst) {
    add(1, "203.0.113.1", 3s);
    fill([](std::size_t) { return "192.0.2.1"; });
    EXPECT_EQ(add(2, "198.51.100.1"), 1U);
}

TEST_F(FullQueue, KeepsThoseWhoHaveLoggedIn) {
    queue.succeeded("192.0.2.1");
    fill([](std::size_t index) { return index == 0 ? "198.51.100.1" : "192.0.2.1"; });
    EXPECT_EQ(add(1, "192.0.2.1"), 100U);
    EXPECT_EQ(add(2, "192.0.2.1"), 2U);
}

// 4096 networks of 64 bits, each of which guesses again and again.
TEST_F(FullQueue, HoldsANewcomerUpForATurn) {
    std::uint64_t guesses = 1000;
    const auto guess = [&] {
        const std::uint64_t number = ++guesses;
        add(number, "2001:db8:0:" + std::to_string(number % 4096) + "::1");
    };
    for (int i = 0; i < 5000; ++i) {
        guess();
    }
    EXPECT_NE(add(1, "2001:db8:1::1"), 1U);
    int turns = 1;
    while (queue.takeNext(now) != 1U) {
        guess();
        ++turns;
    }
    EXPECT_LE(turns, 2);
}

TEST_F(FullQueue, RemembersAFewAddressesOnly) {
    for (std::size_t i = 0; i < 2 * LoginQueue::mostAddresses; ++i) {
        queue.succeeded("host" + std::to_string(i));
    }
    add(1, "stranger");
    add(2, "host0");
    add(3, "host" + std::to_string(2 * LoginQueue::mostAddresses - 1));
    EXPECT_THAT(next(3), ElementsAre(3, 1, 2));
}

} // namespace
} // namespace smisd::test
