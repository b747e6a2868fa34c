#include "server/http/SendQueue.h"

#include <gtest/gtest.h>

#include "server/http/HttpMessage.h"

namespace smisd {
namespace {

class SendQueueTest : public testing::Test {
protected:
    // Has a text sent, and returns where it stood.
    const char* send(std::string text) {
        const char* const place = text.data();
        const std::size_t count = text.size();
        queue.reserve(count, workers);
        queue.push(std::move(text));
        queue.sent(count);
        return place;
    }

    WorkerPool workers{1};
    SendQueue queue{1 << 20};
};

TEST_F(SendQueueTest, TextsGoOutInOrderAndInSlices) {
    queue.reserve(5, workers);
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
    EXPECT_THROW(queue.reserve(1, workers), ConnectionLost);
}

} // namespace
} // namespace smisd
