// What the module writes to standard output while it serves several clients at once.
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

namespace wire {
namespace {

// How often each line stands in a text.
std::map<std::string, int> countLines(const std::string& text) {
    std::map<std::string, int> count;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        ++count[line];
    }
    return count;
}

TEST(TraceLines, OfOperationsThatRunAtTheSameTimeAreWhole) {
    constexpr int clients = 8;
    constexpr int turns = 40;
    const Array array;
    Smisd smisd(array.state(), {"--no-auth", "--workers", "8"});
    const Client client(smisd);

    std::vector<std::thread> threads;
    for (int i = 0; i < clients; ++i) {
        threads.emplace_back([&client] {
            for (int turn = 0; turn < turns; ++turn) {
                EXPECT_EQ(client.enumerate(hostClass).error(), "");
                EXPECT_EQ(client.enumerateNames(controllerClass).error(), "");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_THAT(countLines(smisd.stop().out),
                testing::UnorderedElementsAre(
                    testing::Pair("Starting up the StorageHardwareID provider", 1),
                    testing::Pair("StorageHardwareIDProvider::initialize", 1),
                    testing::Pair("Starting up the SCSIProtocolController provider", 1),
                    testing::Pair("StorageHardwareIDProvider::enumerateInstances", clients * turns),
                    testing::Pair("SCSIProtocolControllerProvider::enumerateInstanceNames",
                                  clients * turns)));
}

} // namespace
} // namespace wire
