#include "server/auth/BasicAuthenticator.h"

#include "server/auth/PasswordHash.h"

#include <gtest/gtest.h>

#include <sodium.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

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
    BasicAuthenticator authenticator{
        {{"alice", hashPassword("se:cret")}, {"bob", hashPassword("other")}},
        [] { return currentTime; }};

    std::chrono::steady_clock::duration timeOf(const std::string& credentials) {
        const auto start = std::chrono::steady_clock::now();
        authenticator.userOf(credentials);
        return std::chrono::steady_clock::now() - start;
    }
};

TEST_F(BasicAuthentication, TakesTheRightPassword) {
    EXPECT_EQ(authenticator.userOf(basic("alice:se:cret")), "alice");
    EXPECT_EQ(authenticator.userOf(basic("bob:other")), "bob");
    EXPECT_EQ(authenticator.userOf("basic " + basic("bob:other").substr(6)), "bob");
}

TEST_F(BasicAuthentication, RefusesOthers) {
    for (const char* text : {"alice:secret", "alice:", "alice", ":se:cret", "bob:se:cret",
                             "ALICE:se:cret", "carol:se:cret", "", ":"}) {
        EXPECT_EQ(authenticator.userOf(basic(text)), std::nullopt) << text;
    }
}

TEST_F(BasicAuthentication, RefusesMalformedCredentials) {
    for (const char* text : {"", "Basic", "Basic ", "Basic !!!!", "Bearer YWxpY2U6c2U6Y3JldA==",
                             "YWxpY2U6c2U6Y3JldA==", "Basic YWxpY2U6c2U6Y3JldA"}) {
        EXPECT_EQ(authenticator.userOf(text), std::nullopt) << text;
    }
}

TEST_F(BasicAuthentication, RemembersWhoWasRightForAWhile) {
    authenticator.userOf(basic("alice:se:cret"));
    EXPECT_LT(timeOf(basic("alice:se:cret")), 5ms);
    EXPECT_EQ(authenticator.userOf(basic("alice:se:cret")), "alice");
    EXPECT_EQ(authenticator.userOf(basic("alice:wrong")), std::nullopt);
    currentTime += BasicAuthenticator::memory;
    EXPECT_GT(timeOf(basic("alice:se:cret")), 5ms);
    EXPECT_EQ(authenticator.userOf(basic("alice:se:cret")), "alice");
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
                EXPECT_EQ(authenticator.userOf(basic("bob:other")), "bob");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace smisd::test
