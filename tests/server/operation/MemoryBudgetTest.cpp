#include "server/operation/MemoryBudget.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace smisd {
namespace {

TEST(MemoryBudget, GivesWhatThereIs) {
    MemoryBudget budget(100);
    MemoryBudget::Reservation first(budget, "");
    EXPECT_TRUE(first.resize(60));
    MemoryBudget::Reservation second(budget, "");
    EXPECT_FALSE(second.resize(41));
    EXPECT_EQ(second.bytes(), 0U);
    EXPECT_EQ(budget.used(), 60U);
    EXPECT_EQ(budget.refusals(), 1U);
    EXPECT_TRUE(second.grow(30));
    EXPECT_TRUE(second.grow(10));
    EXPECT_FALSE(second.grow(1));
    EXPECT_EQ(second.bytes(), 40U);
    EXPECT_EQ(budget.used(), 100U);
}

TEST(MemoryBudget, GetsBackWhatIsNotHeldAnyMore) {
    MemoryBudget budget(100);
    {
        MemoryBudget::Reservation held(budget, "alice");
        EXPECT_TRUE(held.resize(50));
        EXPECT_TRUE(held.resize(20));
        EXPECT_EQ(budget.used(), 20U);
        EXPECT_TRUE(held.grow(30));
    }
    EXPECT_EQ(budget.used(), 0U);
    EXPECT_TRUE(MemoryBudget::Reservation(budget, "alice").resize(50));
}

TEST(MemoryBudget, OneUserHasHalfOfItAtMost) {
    MemoryBudget budget(100);
    MemoryBudget::Reservation one(budget, "alice");
    MemoryBudget::Reservation another(budget, "alice");
    EXPECT_TRUE(one.resize(30));
    EXPECT_FALSE(another.resize(21));
    EXPECT_TRUE(another.resize(20));
    MemoryBudget::Reservation bobs(budget, "bob");
    EXPECT_TRUE(bobs.resize(50));
    EXPECT_FALSE(MemoryBudget::Reservation(budget, "carol").resize(1));
    EXPECT_TRUE(one.resize(0));
    EXPECT_TRUE(MemoryBudget::Reservation(budget, "carol").resize(30));
    EXPECT_TRUE(another.resize(50)); // what carol could not have does not count
}

TEST(MemoryBudget, WithoutANameOneMayHaveAll) {
    MemoryBudget budget(100);
    EXPECT_TRUE(MemoryBudget::Reservation(budget, "").resize(100));
    EXPECT_TRUE(MemoryBudget::Reservation().resize(1000));
}

TEST(MemoryBudget, GivesNothingForANumberThatOverflows) {
    MemoryBudget budget(100);
    MemoryBudget::Reservation held(budget, "alice");
    EXPECT_TRUE(held.resize(10));
    EXPECT_FALSE(held.resize(static_cast<std::size_t>(-1)));
    EXPECT_EQ(budget.used(), 10U);
}

TEST(MemoryBudget, AMovedReservationIsHeldOnce) {
    MemoryBudget budget(100);
    MemoryBudget::Reservation first(budget, "alice");
    EXPECT_TRUE(first.resize(40));
    MemoryBudget::Reservation second = std::move(first);
    EXPECT_EQ(budget.used(), 40U);
    second = MemoryBudget::Reservation();
    EXPECT_EQ(budget.used(), 0U);
}

TEST(MemoryBudget, TellsWhenMuchIsGivenBack) {
    int told = 0;
    MemoryBudget budget(100 << 20, [&] { ++told; });
    MemoryBudget::Reservation held(budget, "");
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(held.resize(60 << 20));
        held.resize(50 << 20);
        held.resize(45 << 20);
        EXPECT_EQ(told, 2 * round);
        held.resize(44 << 20);
        EXPECT_EQ(told, 2 * round + 1);
        held.resize(0);
        EXPECT_EQ(told, 2 * round + 2);
    }
    EXPECT_TRUE(held.resize(10 << 20));
    held.resize(0);
    EXPECT_EQ(told, 4) << "the little ones are kept for the next";
}

TEST(MemoryBudget, IsExactWithManyThreads) {
    MemoryBudget budget(1000);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, user = std::to_string(i % 3)] {
            for (int round = 0; round < 2000; ++round) {
                MemoryBudget::Reservation held(budget, user);
                if (held.resize(300)) {
                    held.grow(100);
                }
                EXPECT_LE(budget.used(), 1000U);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(budget.used(), 0U);
}

} // namespace
} // namespace smisd
