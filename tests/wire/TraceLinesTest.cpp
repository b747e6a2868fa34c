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
#include "tests/wire/support/Masking.h"
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
    constexpr int turns = 2;
    constexpr int volumes = 200; // unknown ones, for each of which a line is written
    const Array array;
    Smisd smisd(array.state(), {"--no-auth", "--workers", "8"});
    const Client client(smisd);
    const Exposure unknown{std::vector<std::string>(volumes, "FF"), {}, {}, {}, {controller(1)}};

    std::vector<std::thread> threads;
    for (int i = 0; i < clients; ++i) {
        threads.emplace_back([&] {
            for (int turn = 0; turn < turns; ++turn) {
                EXPECT_EQ(client.invoke(maskingService, "ExposePaths", unknown.all()).returnValue(),
                          "uint32 4");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_THAT(
        countLines(smisd.stop().out),
        testing::UnorderedElementsAre(
            testing::Pair("Starting up the ControllerConfigurationService provider", 1),
            testing::Pair("ControllerConfigurationServiceProvider::invokeMethod", clients * turns),
            testing::Pair("ObjectID is: 0", clients * turns * volumes)));
}

} // namespace
} // namespace wire
