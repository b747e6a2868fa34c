#include "server/http/WorkerPool.h"

#include <atomic>
#include <new>
#include <set>

#include <gtest/gtest.h>

#include "tests/server/http/TestServer.h"

using namespace std::chrono_literals;

namespace smisd::test {
namespace {

TEST(WorkerPool, RunsAllJobsBeforeItEnds) {
    std::atomic<int> done{0};
    WorkerPool pool(3);
    for (int i = 0; i < 1000; ++i) {
        pool.post([&] { ++done; });
    }
    pool.join();
    EXPECT_EQ(done, 1000);
}

TEST(WorkerPool, RunsNoMoreJobsAtOnceThanItHasWorkers) {
    std::atomic<int> running{0};
    std::atomic<int> most{0};
    WorkerPool pool(3);
    for (int i = 0; i < 50; ++i) {
        pool.post([&] {
            const int now = ++running;
            int before = most;
            while (before < now && !most.compare_exchange_weak(before, now)) {
            }
            std::this_thread::sleep_for(2ms);
            --running;
        });
    }
    pool.join();
    EXPECT_EQ(most, 3);
}

TEST(WorkerPool, JobThatWaitsLeavesItsWorkerToOthers) {
    Gate gate;
    std::atomic<int> done{0};
    WorkerPool pool(1);
    for (int i = 0; i < 5; ++i) {
        pool.post([&] {
            pool.whileWaiting([&] { gate.wait(); });
            ++done;
        });
    }
    gate.awaitWaiting(5);
    EXPECT_EQ(done, 0);
    Gate ran;
    pool.post([&] { ran.open(); });
    ran.wait();
    gate.open();
    pool.join();
    EXPECT_EQ(done, 5);
}

TEST(WorkerPool, EndsAllThreadsThatWereIdleWhenItWasToldToWhileJobsWereQueued) {
    Gate manyThreads;
    WorkerPool pool(1);
    for (int i = 0; i < 8; ++i) {
        pool.post([&] { pool.whileWaiting([&] { manyThreads.wait(); }); });
    }
    manyThreads.awaitWaiting(8);
    manyThreads.open();
    Gate busy;
    pool.post([&] { busy.wait(); });
    busy.awaitWaiting(1);
    pool.post([] {});

    std::jthread joining([&] { pool.join(); });
    std::this_thread::sleep_for(50ms); // its threads have been told, and wait on
    busy.open();
}

TEST(WorkerPool, AllFreeWorkersBeginJobsOnceOneThatHasWaitedGoesOn) {
    Gate mayReturn;
    Gate mayEnd;
    Gate busy;
    WorkerPool pool(3);
    pool.post([&] {
        pool.whileWaiting([&] { mayReturn.wait(); });
        mayEnd.wait();
    });
    mayReturn.awaitWaiting(1);
    for (int i = 0; i < 3; ++i) {
        pool.post([&] { busy.wait(); });
    }
    busy.awaitWaiting(3);
    for (int i = 0; i < 2; ++i) {
        pool.post([&] { mayEnd.wait(); });
    }
    mayReturn.open();
    std::this_thread::sleep_for(20ms); // it needs a worker now
    busy.open();
    mayEnd.awaitWaiting(3);
    mayEnd.open();
}

TEST(WorkerPool, JobThatHasWaitedNeedsAFreeWorker) {
    std::atomic<int> running{0};
    std::atomic<int> most{0};
    WorkerPool pool(2);
    for (int i = 0; i < 40; ++i) {
        pool.post([&] {
            pool.whileWaiting([] { std::this_thread::sleep_for(1ms); });
            const int now = ++running;
            int before = most;
            while (before < now && !most.compare_exchange_weak(before, now)) {
            }
            std::this_thread::sleep_for(2ms);
            --running;
        });
    }
    pool.join();
    EXPECT_LE(most, 2);
}

TEST(WorkerPool, UsersTakeTurns) {
    Gate busy;
    WorkerPool pool(1);
    pool.post([&] { busy.wait(); });
    busy.awaitWaiting(1);
    std::string order; // one worker: no two jobs write at once
    for (const char* user : {"a", "a", "a", "b", "c", "c"}) {
        pool.post([&order, user] { order += user; }, user);
    }
    busy.open();
    pool.join();
    EXPECT_EQ(order, "abcaca");
}

TEST(WorkerPool, OneUserHasHalfOfTheWorkers) {
    Gate busy;
    WorkerPool pool(4);
    for (int i = 0; i < 10; ++i) {
        pool.post([&] { busy.wait(); }, "greedy");
    }
    busy.awaitWaiting(2);
    Gate others;
    pool.post([&] { others.wait(); }, "another");
    pool.post([&] { others.wait(); }, "third");
    others.awaitWaiting(2);
    EXPECT_EQ(pool.running(), 4U);
    others.open();
    busy.open();
    pool.join();
}

TEST(WorkerPool, JobWhoseWaitThrowsIsCountedOnce) {
    WorkerPool pool(1);
    pool.post(
        [&] { EXPECT_THROW(pool.whileWaiting([] { throw std::bad_alloc(); }), std::bad_alloc); });
    pool.join();
    EXPECT_EQ(pool.running(), 0U);
}

TEST(WorkerPool, WithoutNamesOneMayHaveAllWorkers) {
    Gate busy;
    WorkerPool pool(4);
    for (int i = 0; i < 4; ++i) {
        pool.post([&] { busy.wait(); });
    }
    busy.awaitWaiting(4);
    busy.open();
}

TEST(WorkerPool, JobsThatGoOnKeepNoOtherUserWaiting) {
    Gate mayReturn;
    Gate mayEnd;
    WorkerPool pool(4);
    for (int i = 0; i < 20; ++i) {
        pool.post(
            [&] {
                pool.whileWaiting([&] { mayReturn.wait(); });
                mayEnd.wait();
            },
            "greedy");
    }
    mayReturn.awaitWaiting(20);
    mayReturn.open();
    mayEnd.awaitWaiting(2);
    Gate ran;
    pool.post([&] { ran.open(); }, "another"); // while 18 want to go on
    ran.wait();
    mayEnd.open();
    pool.join();
}

TEST(WorkerPool, JobsThatGoOnKeepToTheirUsersShare) {
    Gate mayReturn;
    Gate mayEnd;
    WorkerPool pool(2);
    for (int i = 0; i < 3; ++i) {
        pool.post(
            [&] {
                pool.whileWaiting([&] { mayReturn.wait(); });
                mayEnd.wait();
            },
            "greedy");
    }
    mayReturn.awaitWaiting(3);
    mayReturn.open();
    mayEnd.awaitWaiting(1);
    Gate ran;
    pool.post([&] { ran.open(); }, "another");
    ran.wait();
    for (int i = 0; i < 1000 && pool.running() > 1; ++i) {
        std::this_thread::sleep_for(1ms); // it has run, and has yet to end
    }
    EXPECT_EQ(pool.running(), 1U);
    mayEnd.open();
    pool.join();
}

} // namespace
} // namespace smisd::test
