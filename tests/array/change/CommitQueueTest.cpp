#include "array/change/CommitQueue.h"

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace array {
namespace {

struct Request {
    int worked = 0;
};

TEST(CommitQueue, WorksOnceForEachRequestAndOneBatchAtATime) {
    CommitQueue<Request> queue;
    std::atomic<int> working{0};
    std::atomic<int> batches{0};
    constexpr int each = 500;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < each; ++i) {
                Request request;
                queue.submit(request, [&](const std::vector<Request*>& batch) {
                    EXPECT_EQ(++working, 1);
                    ++batches;
                    for (Request* waiting : batch) {
                        ++waiting->worked;
                    }
                    --working;
                });
                ASSERT_EQ(request.worked, 1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_LE(batches, 8 * each);
}

TEST(CommitQueue, WhoHasTheTurnWorksForAllThatWait) {
    CommitQueue<Request> queue;
    std::atomic<bool> isWorking{false};
    std::atomic<bool> mayStop{false};
    std::vector<std::size_t> sizes; // one batch at a time
    const auto work = [&](const std::vector<Request*>& batch) {
        sizes.push_back(batch.size());
        isWorking = true;
        while (!mayStop) {
            std::this_thread::yield();
        }
        for (Request* waiting : batch) {
            ++waiting->worked;
        }
    };
    std::vector<std::thread> threads;
    const auto submit = [&] {
        threads.emplace_back([&] {
            Request request;
            queue.submit(request, work);
            EXPECT_EQ(request.worked, 1);
        });
    };
    submit();
    while (!isWorking) {
        std::this_thread::yield();
    }
    for (int i = 0; i < 5; ++i) {
        submit();
    }
    // Long enough for the five to queue up; were one late, there would be a batch more.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    mayStop = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    ASSERT_GE(sizes.size(), 2u);
    EXPECT_EQ(sizes[0], 1u);
    EXPECT_GT(sizes[1], 1u);
}

} // namespace
} // namespace array
