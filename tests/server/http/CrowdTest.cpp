#include "server/http/Crowd.h"

#include <chrono>
#include <list>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "server/http/Session.h"

namespace smisd::test {
namespace {

struct FakeSession : Session {
    FakeSession(const std::string& address, State state) : Session(Origin(address)) {
        enterState(state);
    }
    void close() override {}
};

class Connections : public testing::Test {
protected:
    void add(const std::string& address, Session::State state = Session::State::idle,
             int count = 1) {
        for (int i = 0; i < count; ++i) {
            crowd.add(sessions.emplace_back(address, state));
        }
    }
    // From where the one comes that goes for a newcomer from there; "" when nobody has to go.
    std::string largestFor(const std::string& address) const {
        const Session* const session = crowd.largestFor(Origin(address));
        return session == nullptr ? "" : session->origin().address;
    }

    std::list<FakeSession> sessions;
    Crowd crowd;
};

struct Newcomer {
    const char* name;
    std::vector<std::string> open;
    std::string newcomer;
    std::string goes;
};

class NewcomersOf : public Connections, public testing::WithParamInterface<Newcomer> {};

TEST_P(NewcomersOf, Addresses) {
    for (const std::string& address : GetParam().open) {
        add(address);
    }
    EXPECT_EQ(largestFor(GetParam().newcomer), GetParam().goes);
}

INSTANTIATE_TEST_SUITE_P(
    Connections, NewcomersOf,
    testing::Values(
        Newcomer{"OneOfTheManyGoes",
                 {"192.0.2.1", "192.0.2.1", "192.0.2.1"},
                 "198.51.100.1",
                 "192.0.2.1"},
        Newcomer{"NobodyGoesForOneMoreOfTheMany", {"192.0.2.1", "192.0.2.1"}, "192.0.2.1", ""},
        Newcomer{"NobodyGoesForOneAsGood", {"192.0.2.1", "198.51.100.1"}, "203.0.113.1", ""},
        Newcomer{"AddressesOfANetworkAreCountedTogether",
                 {"192.0.2.1", "192.0.2.2", "198.51.100.1"},
                 "203.0.113.1",
                 "192.0.2.1"},
        Newcomer{"InItsOwnNetworkTheLargestGoes",
                 {"192.0.2.1", "192.0.2.2", "192.0.2.2", "198.51.100.1"},
                 "192.0.2.3",
                 "192.0.2.2"},
        Newcomer{"Ipv6NetworkOf64IsOneAddress",
                 {"2001:db8::1", "2001:db8::2", "2001:db8:0:1::1"},
                 "2001:db8:0:2::1",
                 "2001:db8::1"},
        Newcomer{"Ipv6NetworkOf48IsCountedTogether",
                 {"2001:db8::1", "2001:db8:0:1::1", "2001:db8:1::1"},
                 "2001:db8:2::1",
                 "2001:db8:0:1::1"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Connections, WhoKeepsTheServerWaitingGoesFirst) {
    add("192.0.2.1", Session::State::working, 3);
    add("192.0.2.1", Session::State::sending);
    Session& sending = sessions.back();
    EXPECT_EQ(crowd.largestFor(Origin("198.51.100.1")), &sending);
}

TEST_F(Connections, WhoHasWaitedForLongestGoes) {
    add("192.0.2.1", Session::State::working);
    add("192.0.2.2", Session::State::receiving);
    Session& receiving = sessions.back();
    const auto soon = std::chrono::steady_clock::now() + std::chrono::hours(1);
    EXPECT_EQ(crowd.waitingSince(soon), &receiving);
    add("192.0.2.3", Session::State::idle);
    Session& idle = sessions.back();
    EXPECT_EQ(crowd.waitingSince(soon), &idle);
    add("192.0.2.3", Session::State::idle);
    EXPECT_EQ(crowd.waitingSince(soon), &idle);
    add("192.0.2.4", Session::State::idle, 3); // of whom there are more
    EXPECT_EQ(crowd.waitingSince(soon)->origin().address, "192.0.2.4");
    EXPECT_EQ(crowd.waitingSince({}), nullptr);
}

TEST_F(Connections, WhoHasLeftDoesNotCount) {
    add("192.0.2.1", Session::State::idle, 3);
    for (int i = 0; i < 2; ++i) {
        crowd.remove(sessions.back());
        crowd.remove(sessions.back()); // a second time is nothing
        sessions.pop_back();
    }
    EXPECT_EQ(crowd.size(), 1U);
    EXPECT_EQ(largestFor("198.51.100.1"), "");
}

} // namespace
} // namespace smisd::test
