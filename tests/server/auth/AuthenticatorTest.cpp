#include "server/auth/Authenticator.h"

#include <chrono>
#include <fstream>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
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

// Bytes that this process has mapped.
rlim_t addressSpace() {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
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
        const Judgement judgement = judged(address, credentials);
        return judgement.user ? judgement.user->name : "nobody";
    }
    // As PasswordThread does, but time passes as it is needed.
    Judgement judged(const std::string& address, const std::string& credentials) {
        std::optional<Judgement> judgement;
        authenticator.judge({credentials, address},
                            [&](const Judgement& result) { judgement = result; });
        while (!judgement) {
            authenticator.serveNext();
            if (!judgement) {
                waited += 100ms;
                currentTime += 100ms;
            }
        }
        return *judgement;
    }
    // Asks and does not wait for what becomes of it.
    void ask(const std::string& address, const std::string& credentials) {
        authenticator.judge({credentials, address},
                            [&](const Judgement& result) { judgements.push_back(result); });
    }
    std::vector<Judgement> judgements;

    std::chrono::steady_clock::duration timeOf(const std::string& credentials) {
        const auto start = std::chrono::steady_clock::now();
        userOf(credentials);
        return std::chrono::steady_clock::now() - start;
    }
};

TEST_F(BasicAuthentication, TakesTheRightPassword) {
    EXPECT_EQ(userOf(basic("alice:se:cret")), "alice");
    EXPECT_EQ(userOf(basic("bob:other")), "bob");
    EXPECT_EQ(judged("192.0.2.1", basic("bob:other")), (Judgement{User{"bob", Role::reader}}));
    EXPECT_EQ(judged("192.0.2.1", basic("alice:se:cret")),
              (Judgement{User{"alice", Role::administrator}}));
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

TEST_F(BasicAuthentication, GoesOnRememberingWhoKeepsAsking) {
    userOf(basic("alice:se:cret"));
    for (int i = 0; i < 100; ++i) {
        currentTime += BasicAuthenticator::memory - 1s;
        ask("192.0.2.1", basic("alice:se:cret")); // nobody looks at passwords
        ASSERT_EQ(judgements.size(), static_cast<std::size_t>(i) + 1);
        EXPECT_TRUE(judgements.back().user);
    }
}

TEST_F(BasicAuthentication, ForgetsWhoIsGoneOrHasANewPasswordWhenTheUsersAreReplaced) {
    userOf(basic("alice:se:cret"));
    userOf(basic("bob:other"));
    authenticator.replaceUsers({{"alice", {hashPassword("new"), Role::reader}}});
    EXPECT_EQ(userOf(basic("alice:se:cret")), "nobody");
    EXPECT_EQ(userOf(basic("bob:other")), "nobody");
    EXPECT_EQ(judged("192.0.2.1", basic("alice:new")), (Judgement{User{"alice", Role::reader}}));
}

TEST_F(BasicAuthentication, RemembersTheOthersWhenTheUsersAreReplaced) {
    const std::string hash = hashPassword("mine");
    authenticator.replaceUsers({{"carol", {hash, Role::administrator}}});
    userOf(basic("carol:mine"));
    authenticator.replaceUsers({{"alice", {hash, Role::reader}}, {"carol", {hash, Role::reader}}});
    ask("192.0.2.1", basic("carol:mine")); // nobody looks at passwords
    ASSERT_EQ(judgements.size(), 1U);
    EXPECT_EQ(judgements[0].user, (User{"carol", Role::reader}));
}

TEST_F(BasicAuthentication, ServesSeveralThreads) {
    BasicAuthenticator own({{"bob", {hashPassword("other"), Role::reader}}});
    const PasswordThread passwords(own);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int turn = 0; turn < 20; ++turn) {
                std::promise<Judgement> judgement;
                own.judge({basic("bob:other"), "192.0.2.1"},
                          [&](const Judgement& result) { judgement.set_value(result); });
                EXPECT_TRUE(judgement.get_future().get().user);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(BasicAuthentication, ForgetsLoginsThatWaitAtTheEnd) {
    const auto asked = std::make_shared<int>();
    {
        BasicAuthenticator own({{"bob", {hashPassword("other"), Role::reader}}});
        {
            const PasswordThread passwords(own);
            for (int i = 0; i < 20; ++i) {
                own.judge({basic("bob:other"), "192.0.2.1"}, [asked](const auto&) {});
            }
        }
        EXPECT_EQ(asked.use_count(), 1);
        EXPECT_EQ(own.waiting(), 0U);
    }
}

// A client behind the address of a guesser

TEST_F(BasicAuthentication, KnownLoginDoesNotNoticeAGuesserAtItsAddress) {
    userFrom("198.51.100.7", basic("alice:se:cret"));
    for (int i = 0; i < 50; ++i) {
        ask("198.51.100.7", basic("bob:guess"));
        authenticator.serveNext();
    }
    judgements.clear();
    ask("198.51.100.7", basic("alice:se:cret"));
    EXPECT_EQ(judgements, (std::vector{Judgement{User{"alice", Role::administrator}}}));
}

TEST_F(BasicAuthentication, NewLoginBesideAGuesserIsNeverToldThatItIsWrong) {
    for (int i = 0; i < 7; ++i) {
        userFrom("198.51.100.8", basic("bob:guess"));
    }
    ask("198.51.100.8", basic("bob:guess"));
    ask("198.51.100.8", basic("bob:guess"));
    judgements.clear();
    ask("198.51.100.8", basic("bob:other"));
    EXPECT_EQ(judgements, (std::vector{Judgement{{}, LoginThrottle::longestWait}}));
}

// Too many at once

TEST_F(BasicAuthentication, TurnsAwayWhoFindsNoPlaceOrWaitsForTooLong) {
    for (std::size_t i = 0; i < LoginQueue::mostWaiting; ++i) {
        ask("203.0.113.1", basic("bob:guess" + std::to_string(i)));
    }
    EXPECT_TRUE(judgements.empty());
    ask("203.0.113.1", basic("bob:other"));
    ASSERT_EQ(judgements.size(), 1U);
    EXPECT_FALSE(judgements.front().user);
    EXPECT_TRUE(judgements.front().tryAgainAfter);
    currentTime += LoginQueue::longestWait + 1s;
    for (std::size_t i = 0; i < LoginQueue::mostWaiting; ++i) {
        authenticator.serveNext();
    }
    EXPECT_EQ(judgements.size(), LoginQueue::mostWaiting + 1);
    for (const Judgement& judgement : judgements) {
        EXPECT_TRUE(judgement.tryAgainAfter);
    }
    EXPECT_TRUE(failures.empty());
}

// 4 TiB, which nobody has.
TEST_F(BasicAuthentication, WithoutMemoryForAHashIsToBeTriedAgain) {
#ifdef WITH_SANITIZER
    GTEST_SKIP() << "a sanitizer ends the program where there is no memory";
#endif
    std::string huge = hashPassword("right");
    const std::size_t at = huge.find("m=65536");
    ASSERT_NE(at, std::string::npos);
    huge.replace(at, 7, "m=4294967295");
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    const rlimit before = limit;
    limit.rlim_cur = addressSpace() + (rlim_t{1} << 30U);
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
    authenticator.replaceUsers({{"carol", {huge, Role::reader}}});
    const Judgement judgement = judged("192.0.2.1", basic("carol:right"));
    setrlimit(RLIMIT_AS, &before);
    EXPECT_FALSE(judgement.user);
    EXPECT_TRUE(judgement.tryAgainAfter);
    EXPECT_TRUE(failures.empty());
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
