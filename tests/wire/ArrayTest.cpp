// What clients do on the wire and what the array has of it.
#include "tests/wire/support/Array.h"

#include <atomic>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Client.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Pair.h"
#include "tests/wire/support/Smisd.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace wire {
namespace {

std::string request(const std::string& name) {
    return requestBytes(readFile(std::string(PAIRS) + "/" + name + ".request"));
}

TEST(Array, ChangesBesideTheServerAreSeen) {
    const Array array;
    const Smisd smisd(array.state());
    const std::string host = "iqn.2026-01.com.example:later";
    EXPECT_THAT(roundTrip(smisd.port(), request("EnumerateHosts")), Not(HasSubstr(host)));
    array.arrayctl({"initiator", "create", host});
    EXPECT_THAT(roundTrip(smisd.port(), request("EnumerateHosts")), HasSubstr(host));
}

// The service is made without a call of the array's engine.
TEST(Array, ThatAppearsAfterTheStartNamesItsServicesAtOnce) {
    const Array array{Array::Empty()};
    const Smisd smisd(array.state());
    const Client client(smisd);
    const std::string service = "CIM_StorageHardwareIDManagementService";
    EXPECT_THAT(client.enumerate(service).each("SystemName"), ElementsAre("localhost"));
    array.arrayctl({"import", "-"}, R"({"host": "late.example.com", "system": "late"})");
    EXPECT_THAT(client.enumerate(service).each("SystemName"), ElementsAre("late"));
}

TEST(Array, SurvivesBadRequests) {
    const Array array;
    const std::string before = array.arrayctl({"export"});
    const Smisd smisd(array.state());
    for (const Pair& pair : readPairs(PAIRS)) {
        if (pair.name.starts_with("Bad")) {
            roundTrip(smisd.port(), requestBytes(pair.request));
        }
    }
    EXPECT_THAT(roundTrip(smisd.port(), request("EnumerateHosts")),
                StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_EQ(array.arrayctl({"export"}), before);
    EXPECT_EQ(array.arrayctl({"check"}), "");
}

TEST(Array, ServesManyClientsAtOnce) {
    const Array array;
    const Smisd smisd(array.state());
    std::atomic<int> good{0};
    std::vector<std::thread> clients;
    for (int i = 0; i < 16; ++i) {
        clients.emplace_back([&] {
            for (int turn = 0; turn < 10; ++turn) {
                const std::string response = roundTrip(smisd.port(), request("EnumerateHosts"));
                good += response.find("eui.02004567A425678D") != std::string::npos;
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(good, 160);
}

} // namespace
} // namespace wire
