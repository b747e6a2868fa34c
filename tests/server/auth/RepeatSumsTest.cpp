#include "server/auth/RepeatSums.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace smisd::test {
namespace {

using Sums = RepeatSums<std::string>;

// Only the test moves the time, so the thread of the sums writes nothing before that.
std::atomic<Sums::Clock::time_point> currentTime{Sums::Clock::time_point(1h)};

class Repeats : public testing::Test {
protected:
    bool add(const std::string& kind) { return sums->isFirst(kind, "wider"); }

    // What was written since the last call.
    std::vector<std::pair<std::string, std::uint64_t>> taken() {
        const std::lock_guard lock(mutex);
        return std::exchange(written, {});
    }
    void pass(std::chrono::seconds time) {
        currentTime = currentTime.load() + time;
        sums->writeEnded();
    }

    std::mutex mutex;
    std::vector<std::pair<std::string, std::uint64_t>> written;
    std::optional<Sums> sums{std::in_place,
                             [this](const std::string& kind, std::uint64_t count) {
                                 const std::lock_guard lock(mutex);
                                 written.emplace_back(kind, count);
                             },
                             [] { return currentTime.load(); }};
};

TEST_F(Repeats, AreCountedFromTheSecondOn) {
    EXPECT_TRUE(add("a"));
    EXPECT_FALSE(add("a"));
    EXPECT_TRUE(add("b"));
    EXPECT_FALSE(add("a"));
    pass(Sums::period - 1s);
    EXPECT_THAT(taken(), IsEmpty());
    pass(1s);
    EXPECT_THAT(taken(), ElementsAre(Pair("a", 2U)));
}

TEST_F(Repeats, AreSummedAsLongAsTheyGoOn) {
    add("a");
    for (const std::uint64_t count : {3U, 1U}) {
        for (std::uint64_t i = 0; i < count; ++i) {
            EXPECT_FALSE(add("a"));
        }
        pass(Sums::period);
        EXPECT_THAT(taken(), ElementsAre(Pair("a", count)));
    }
    pass(Sums::period);
    EXPECT_THAT(taken(), IsEmpty());
    EXPECT_TRUE(add("a"));
}

TEST_F(Repeats, OfMoreKindsThanAreToldApartAreSummedByAWiderKind) {
    for (std::size_t i = 0; i < Sums::mostKinds; ++i) {
        EXPECT_TRUE(add(std::to_string(i)));
    }
    EXPECT_TRUE(add("x")); // the first of the wider kind
    EXPECT_FALSE(add("y"));
    EXPECT_FALSE(add("z"));
    EXPECT_FALSE(add("0"));
    pass(Sums::period);
    EXPECT_THAT(taken(), UnorderedElementsAre(Pair("wider", 2U), Pair("0", 1U)));
}

TEST_F(Repeats, TakeNoMoreMemoryWhateverComes) {
    std::size_t first = 0;
    for (std::size_t i = 0; i < 10 * Sums::mostKinds; ++i) {
        first += sums->isFirst(std::to_string(i), "wider " + std::to_string(i)) ? 1U : 0U;
    }
    EXPECT_EQ(first, 2 * Sums::mostKinds + 1);
    pass(Sums::period);
    EXPECT_THAT(taken(), ElementsAre(Pair("", 8 * Sums::mostKinds - 1)));
}

TEST_F(Repeats, AreWrittenAtTheEnd) {
    add("a");
    add("a");
    sums.reset();
    EXPECT_THAT(taken(), ElementsAre(Pair("a", 1U)));
}

TEST_F(Repeats, AreWrittenWithoutFurtherEvents) {
    add("a");
    add("a");
    currentTime = currentTime.load() + Sums::period;
    std::vector<std::pair<std::string, std::uint64_t>> result;
    for (int i = 0; i < 3000 && result.empty(); ++i) {
        std::this_thread::sleep_for(10ms);
        result = taken();
    }
    EXPECT_THAT(result, ElementsAre(Pair("a", 1U)));
}

TEST_F(Repeats, OfSeveralThreadsAreAllCounted) {
    std::atomic<std::uint64_t> first{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int turn = 0; turn < 1000; ++turn) {
                first += add("a") ? 1U : 0U;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(first, 1U);
    pass(Sums::period);
    EXPECT_THAT(taken(), ElementsAre(Pair("a", 3999U)));
}

} // namespace
} // namespace smisd::test
