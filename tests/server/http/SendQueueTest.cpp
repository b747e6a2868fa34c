#include "server/http/SendQueue.h"

#include <gtest/gtest.h>

#include "server/http/HttpMessage.h"
#include "tests/server/http/TestServer.h"

namespace smisd {
namespace {

using test::Gate;

class SendQueueTest : public testing::Test {
protected:
    // Has a text sent, and returns where it stood.
    const char* send(std::string text) {
        const char* const place = text.data();
        const std::size_t count = text.size();
        queue.reserve(text, workers);
        queue.push(std::move(text));
        queue.sent(count);
        return place;
    }

    WorkerPool workers{1};
    SendQueue queue{1 << 20};
};

TEST_F(SendQueueTest, TextsGoOutInOrderAndInSlices) {
    queue.reserve("abcde", workers);
    queue.push("abc");
    queue.push("de");
    EXPECT_EQ(queue.next(2), "ab");
    queue.sent(2);
    EXPECT_EQ(queue.next(2), "c");
    queue.sent(1);
    EXPECT_EQ(queue.next(100), "de");
    queue.sent(2);
    EXPECT_TRUE(queue.empty());
}

TEST_F(SendQueueTest, RoomOfASentTextIsThereForTheNext) {
    EXPECT_EQ(queue.spareText(), "");
    const char* const place = send(std::string(5000, 'x'));
    const std::string next = queue.spareText();
    EXPECT_EQ(next, "");
    EXPECT_EQ(next.data(), place);
    EXPECT_LT(queue.spareText().capacity(), 5000U);
}

TEST_F(SendQueueTest, KeepsFewSpareTexts) {
    for (int i = 0; i < 20; ++i) {
        send(std::string(5000, 'x'));
    }
    int kept = 0;
    while (queue.spareText().capacity() >= 5000) {
        ++kept;
    }
    EXPECT_EQ(kept, 4);
}

TEST_F(SendQueueTest, KeepsNoSpareTextWhenTheyAreDropped) {
    send(std::string(5000, 'x'));
    queue.dropSpareTexts();
    EXPECT_LT(queue.spareText().capacity(), 5000U);
}

TEST_F(SendQueueTest, NothingIsReservedForALostClient) {
    queue.lose();
    EXPECT_THROW(queue.reserve("a", workers), ConnectionLost);
}

TEST_F(SendQueueTest, HoldsMemoryForWhatIsOnItsWayAndForSpareTexts) {
    MemoryBudget budget(100'000);
    queue.holdIn(MemoryBudget::Reservation(budget, ""));
    std::string text(5000, 'x');
    queue.reserve(text, workers);
    queue.push(std::move(text));
    EXPECT_GE(budget.used(), 5000U);
    queue.sent(5000);
    EXPECT_GE(budget.used(), 5000U) << "the text is kept for the next";
    queue.spareText();
    EXPECT_EQ(budget.used(), 0U);
    send(std::string(5000, 'x'));
    queue.dropSpareTexts();
    EXPECT_EQ(budget.used(), 0U);
}

TEST_F(SendQueueTest, AShortTextWaitsForNoMemory) {
    MemoryBudget budget(10'000);
    MemoryBudget::Reservation others(budget, "");
    EXPECT_TRUE(others.resize(10'000));
    queue.holdIn(MemoryBudget::Reservation(budget, ""));
    EXPECT_FALSE(send(std::string(5000, 'x')) == nullptr);
    EXPECT_EQ(budget.used(), 10'000U);
}

// As a long refusal to a user whose share is used up: its thread is none of the pool's.
TEST_F(SendQueueTest, ATextOfTheIoThreadWaitsForNothing) {
    MemoryBudget budget(10'000);
    MemoryBudget::Reservation others(budget, "");
    EXPECT_TRUE(others.resize(10'000));
    queue.holdIn(MemoryBudget::Reservation(budget, ""));
    std::string text(100'000, 'x');
    queue.reserveAtOnce(text);
    queue.push(std::move(text));
    EXPECT_EQ(queue.next(1'000'000).size(), 100'000U);
    EXPECT_EQ(budget.used(), 10'000U);
}

TEST_F(SendQueueTest, WaitsForMemoryAndSaysSo) {
    MemoryBudget budget(50'000);
    MemoryBudget::Reservation others(budget, "");
    EXPECT_TRUE(others.resize(40'000));
    int said = 0;
    SendQueue waiting(1 << 20, [&] {
        if (++said == 2) {
            others.resize(0);
        }
    });
    waiting.holdIn(MemoryBudget::Reservation(budget, ""));
    Gate reserved;
    workers.post([&] {
        waiting.reserve(std::string(20'000, 'x'), workers);
        reserved.open();
    });
    reserved.wait();
    EXPECT_EQ(said, 2);
    EXPECT_GE(budget.used(), 20'000U);
    workers.join();
}

} // namespace
} // namespace smisd
