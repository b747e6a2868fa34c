#include "server/main/StandardOutput.h"

#include <array>
#include <chrono>
#include <fcntl.h>
#include <ostream>
#include <string>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace smisd::test {
namespace {

class UnblockedOutputTest : public testing::Test {
protected:
    UnblockedOutputTest() {
        EXPECT_EQ(pipe2(_ends.data(), O_CLOEXEC), 0);
        fcntl(_ends[0], F_SETFL, O_NONBLOCK);
    }
    ~UnblockedOutputTest() override {
        close(_ends[0]);
        close(_ends[1]);
    }

    int writing() const { return _ends[1]; }

    // All that is in the pipe.
    std::string read() const {
        std::string text;
        std::array<char, 65536> buffer{};
        for (ssize_t count = 0; (count = ::read(_ends[0], buffer.data(), buffer.size())) > 0;) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

    // Flushes lines with ascending numbers until one is dropped; returns those that were not.
    static std::string fill(std::ostream& stream, const UnblockedOutput& output) {
        const std::uint64_t before = output.dropped();
        std::string lines;
        for (int i = 0;; ++i) {
            const std::string line = "line " + std::to_string(i) + '\n';
            stream << line << std::flush;
            if (output.dropped() > before) {
                return lines;
            }
            lines += line;
        }
    }

private:
    std::array<int, 2> _ends{};
};

TEST_F(UnblockedOutputTest, WritesAtEachFlush) {
    UnblockedOutput output(writing(), 1ms);
    std::ostream stream(&output);
    stream << "one" << ' ' << 2;
    EXPECT_EQ(read(), "");
    stream << std::endl;
    EXPECT_EQ(read(), "one 2\n");
    EXPECT_EQ(output.dropped(), 0U);
}

TEST_F(UnblockedOutputTest, WritesWhatIsLeftAtItsEnd) {
    {
        UnblockedOutput output(writing(), 1ms);
        std::ostream(&output) << "no end of line";
    }
    EXPECT_EQ(read(), "no end of line");
}

TEST_F(UnblockedOutputTest, DropsAndCountsWholeLinesWhileThePipeIsFull) {
    UnblockedOutput output(writing(), 1ms);
    std::ostream stream(&output);
    const std::string lines = fill(stream, output);
    stream << "dropped" << std::endl << "dropped too" << std::endl;
    EXPECT_EQ(output.dropped(), 3U);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(read(), lines);
    stream << "read again" << std::endl;
    EXPECT_EQ(read(), "read again\n");
    EXPECT_EQ(output.dropped(), 3U);
}

TEST_F(UnblockedOutputTest, WritesTheRestOfALongLineBeforeTheNextOne) {
    UnblockedOutput output(writing(), 1ms);
    std::ostream stream(&output);
    const std::string line = std::string(200000, 'x') + '\n';
    stream << line << std::flush << "dropped" << std::endl;
    EXPECT_EQ(output.dropped(), 1U);
    std::string all = read();
    EXPECT_LT(all.size(), line.size());
    while (all.size() < line.size()) {
        stream << std::flush;
        all += read();
    }
    stream << "next" << std::endl;
    EXPECT_EQ(all + read(), line + "next\n");
    EXPECT_EQ(output.dropped(), 1U);
}

TEST_F(UnblockedOutputTest, WaitsForASlowReader) {
    UnblockedOutput output(writing(), 1min);
    std::ostream stream(&output);
    const std::string line = std::string(999, 'x') + '\n';
    std::string all;
    std::thread reader([&] {
        while (all.size() < 300 * line.size()) {
            std::this_thread::sleep_for(1ms);
            all += read();
        }
    });
    for (int i = 0; i < 300; ++i) {
        stream << line << std::flush;
    }
    reader.join();
    EXPECT_EQ(output.dropped(), 0U);
}

TEST_F(UnblockedOutputTest, WaitsOnceForNobody) {
    UnblockedOutput output(writing(), 100ms);
    std::ostream stream(&output);
    fill(stream, output);
    const auto began = std::chrono::steady_clock::now();
    for (int i = 0; i < 100; ++i) {
        stream << "dropped" << std::endl;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - began, 1s);
    EXPECT_EQ(output.dropped(), 101U);
}

TEST_F(UnblockedOutputTest, LeavesTheDescriptorBlocking) {
    const UnblockedOutput output(writing(), 1ms);
    EXPECT_EQ(fcntl(writing(), F_GETFL) & O_NONBLOCK, 0);
}

} // namespace
} // namespace smisd::test
