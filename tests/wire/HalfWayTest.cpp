// What a client sees of an enumeration that fails after objects were delivered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

using testing::IsEmpty;

namespace wire {
namespace {

// An array with one portal and so many sessions through it: the pipe of the second connection has
// no portal at its position.
std::string withSessions(int count) {
    std::string sessions;
    for (int i = 0; i < count; ++i) {
        sessions += std::string(i == 0 ? "" : ",") + R"({ "target": "iqn.2026-01.com.example:t1",
            "initiator": "iqn.2026-01.com.example:host1", "connections": [ { "endpoint": 0 } ] })";
    }
    return R"({ "host": "array1.example.com", "system": "array1",
        "endpoints": [ { "address": "192.0.2.10", "port": 3260 } ],
        "targets": [ { "name": "iqn.2026-01.com.example:t1" } ],
        "initiators": [ { "name": "iqn.2026-01.com.example:host1" } ],
        "grants": [ { "target": "iqn.2026-01.com.example:t1",
                      "initiator": "iqn.2026-01.com.example:host1" } ],
        "sessions": [ )" +
           sessions + "] }";
}

struct Served {
    explicit Served(int sessions) : array(withSessions(sessions)) {}

    Array array;
    Smisd smisd{array.state()};
    Client client{smisd};
};

TEST(HalfWay, WithoutChunksTheErrorIsTheAnswer) {
    const Served two(2);
    for (const Answer& answer :
         {two.client.enumerate(pipeEndClass), two.client.enumerateNames(pipeEndClass)}) {
        EXPECT_EQ(answer.error(), outOfBounds);
        EXPECT_THAT(answer.names(), IsEmpty());
    }
}

TEST(HalfWay, WithChunksTheErrorFollowsInTheTrailer) {
    const Served two(2);
    for (const Answer& answer : {two.client.enumerate(pipeEndClass, true),
                                 two.client.enumerateNames(pipeEndClass, true)}) {
        EXPECT_EQ(answer.error(), "1 CIM_ERR_FAILED%3A%20index%20out%20of%20bounds");
        EXPECT_THAT(answer.names(), IsEmpty());
    }
}

TEST(HalfWay, WithChunksTheHundredsOfObjectsBeforeItAreThere) {
    const Served many(160); // 160 pipes of the target, and one of the portal
    const Answer answer = many.client.enumerateNames(pipeEndClass, true);
    EXPECT_EQ(answer.error(), "1 index%20out%20of%20bounds");
    EXPECT_EQ(answer.size(), 100U);
    EXPECT_EQ(many.client.enumerateNames(pipeEndClass).error(), outOfBounds);
}

} // namespace
} // namespace wire
