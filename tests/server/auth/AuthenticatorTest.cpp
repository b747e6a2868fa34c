#include "server/auth/Authenticator.h"

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sodium.h>

#include "server/auth/Users.h"

using namespace std::chrono_literals;

namespace smisd::test {
namespace {

BasicAuthenticator::Clock::time_point currentTime;

std::string basic(const std::string& text) {
    std::string encoded(sodium_base64_encoded_len(text.size(), sodium_base64_VARIANT_ORIGINAL),
                        '\0');
    sodium_bin2base64(encoded.data(), encoded.size(),
                      reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                      sodium_base64_VARIANT_ORIGINAL);
    return std::string("Basic ") + encoded.c_str();
}

class BasicAuthentication : public testing::Test {
protected:
    std::vector<FailedLogin> failures;
    BasicAuthenticator authenticator{
        {{"alice", {hashPassword("se:cret"), Role::administrator}},
         {"bob", {hashPassword("other"), Role::reader}}},
        [this](const FailedLogin& login) { failures.push_back(login); },
        [] { return currentTime; }};
    std::chrono::milliseconds waited{0};

    // The name of the user, from an address that nobody else has.
    std::string userOf(const std::string& credentials) {
        static int count = 0;
        return userFrom("192.0.2." + std::to_string(++count), credentials);
    }
    std::string userFrom(const std::string& address, const std::string& credentials) {
        const auto user = authenticator.userOf({credentials, address, [this](auto time) {
                                                    waited += time;
                                                    currentTime += time;
                                                }});
        return user ? user->name : "nobody";
    }

    std::chrono::steady_clock::duration timeOf(const std::string& credentials) {
        const auto start = std::chrono::steady_clock::now();
        userOf(credentials);
        return std::chrono::steady_clock::now() - start;
    }
};

TEST_F(BasicAuthentication, TakesTheRightPassword) {
    EXPECT_EQ(userOf(basic("alice:se:cret")), "alice");
    EXPECT_EQ(userOf(basic("bob:other")), "bob");
    EXPECT_EQ(authenticator.userOf({basic("bob:other"), "192.0.2.1", {}}),
              (User{"bob", Role::reader}));
    EXPECT_EQ(authenticator.userOf({basic("alice:se:cret"), "192.0.2.1", {}}),
              (User{"alice", Role::administrator}));
    EXPECT_EQ(userOf("basic " + basic("bob:other").substr(6)), "bob");
}

TEST_F(BasicAuthentication, RefusesOthers) {
    for (const char* text : {"alice:secret", "alice:", "alice", ":se:cret", "bob:se:cret",
                             "ALICE:se:cret", "carol:se:cret", "", ":"}) {
        EXPECT_EQ(userOf(basic(text)), "nobody") << text;
    }
}

TEST_F(BasicAuthentication, RefusesMalformedCredentials) {
    for (const char* text : {"", "Basic", "Basic ", "Basic !!!!", "Bearer YWxpY2U6c2U6Y3JldA==",
                             "YWxpY2U6c2U6Y3JldA==", "Basic YWxpY2U6c2U6Y3JldA"}) {
        EXPECT_EQ(userOf(text), "nobody") << text;
    }
}

TEST_F(BasicAuthentication, RemembersWhoWasRightForAWhile) {
    userOf(basic("alice:se:cret"));
    EXPECT_LT(timeOf(basic("alice:se:cret")), 5ms);
    EXPECT_EQ(userOf(basic("alice:se:cret")), "alice");
    EXPECT_EQ(userOf(basic("alice:wrong")), "nobody");
    currentTime += BasicAuthenticator::memory;
    EXPECT_GT(timeOf(basic("alice:se:cret")), 5ms);
    EXPECT_EQ(userOf(basic("alice:se:cret")), "alice");
}

TEST_F(BasicAuthentication, UnknownUserCostsAHashToo) {
    EXPECT_GT(timeOf(basic("carol:x")), 5ms);
    EXPECT_GT(timeOf(basic("carol:x")), 5ms);
}

TEST_F(BasicAuthentication, ServesSeveralThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([this] {
            for (int turn = 0; turn < 20; ++turn) {
                EXPECT_TRUE(authenticator.userOf({basic("bob:other"), "192.0.2.1", {}}));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(BasicAuthentication, LooksAtPasswordsMoreSlowlyAfterAWrongOne) {
    EXPECT_EQ(userFrom("198.51.100.1", basic("bob:wrong")), "nobody");
    EXPECT_EQ(waited, 0s);
    EXPECT_EQ(userFrom("198.51.100.1", basic("bob:other")), "bob");
    EXPECT_EQ(waited, 1s);
    EXPECT_EQ(userFrom("198.51.100.1", basic("bob:other")), "bob"); // remembered
    EXPECT_EQ(userFrom("198.51.100.2", basic("alice:se:cret")), "alice");
    EXPECT_EQ(waited, 1s);
}

TEST_F(BasicAuthentication, LooksAtNoPasswordThatWouldWaitForTooLong) {
    for (int i = 0; i < 6; ++i) {
        userFrom("198.51.100.3", basic("bob:wrong"));
    }
    failures.clear();
    const auto impatient = [&] {
        return authenticator.userOf({basic("bob:other"), "198.51.100.3", [](auto) {}});
    };
    EXPECT_TRUE(impatient()); // waits, and is remembered then
    currentTime += BasicAuthenticator::memory;
    EXPECT_TRUE(impatient());
    for (int i = 0; i < 2; ++i) {
        authenticator.userOf({basic("bob:bad"), "198.51.100.3", [](auto) {}});
    }
    ASSERT_FALSE(failures.empty());
    EXPECT_STREQ(failures.back().reason, "too many attempts wait already");
}

TEST_F(BasicAuthentication, TellsOfFailuresWithoutWhatMayBeAPassword) {
    userFrom("198.51.100.4", basic("bob:wrong"));
    userFrom("198.51.100.5", basic("my-passw0rd:bob"));
    userFrom("198.51.100.6", "Basic !!!!");
    userFrom("198.51.100.6", "");
    ASSERT_EQ(failures.size(), 3U);
    EXPECT_EQ(failures[0].user, "bob");
    EXPECT_EQ(failures[0].address, "198.51.100.4");
    EXPECT_STREQ(failures[0].reason, "unknown user or wrong password");
    EXPECT_EQ(failures[1].user, "");
    EXPECT_STREQ(failures[1].reason, "unknown user or wrong password");
    EXPECT_STREQ(failures[2].reason, "malformed credentials");
}

} // namespace
} // namespace smisd::test
