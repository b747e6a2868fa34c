#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_TARGET;

class ConcurrencyTest : public ArrayFixture {
protected:
    static std::string name(int thread, int i) {
        return "iqn.2026-01.com.example:h" + std::to_string(thread) + "-" + std::to_string(i);
    }
};

TEST_F(ConcurrencyTest, ChangesOfManyThreadsAreAllMadeAndShareCommits) {
    constexpr int threads = 8;
    constexpr int each = 40;
    std::vector<std::thread> writers;
    for (int thread = 0; thread < threads; ++thread) {
        writers.emplace_back([&, thread] {
            for (int i = 0; i < each; ++i) {
                Id id = 0;
                change([&](Change& change) { id = change.create(Initiator{name(thread, i), {}}); });
                // Acknowledged, so it is there for everybody.
                ASSERT_EQ(now()->initiatorByName(name(thread, i)), id);
                ASSERT_EQ(failureOf([&] {
                              change([&](Change& change) {
                                  change.create(Initiator{name(thread, i), {}});
                              });
                          }).code,
                          ErrorCode::NameTaken);
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(now()->count(CLASSID_INITIATOR), std::size_t{threads * each});
    EXPECT_LT(now()->version(), static_cast<std::uint64_t>(threads * each));
    reopen();
    EXPECT_EQ(now()->count(CLASSID_INITIATOR), std::size_t{threads * each});
    EXPECT_TRUE(array().check().empty());
}

TEST_F(ConcurrencyTest, AChangeThatFailsLeavesNothingInTheCommitThatItShares) {
    std::thread failing;
    std::thread other;
    change([&](Change& change) {
        change.create(Initiator{name(0, 0), {}});
        failing = std::thread([&] {
            const Failure failure = failureOf([&] {
                this->change([&](Change& next) {
                    next.create(Initiator{name(1, 0), {}});
                    next.create(Initiator{name(1, 1), {}});
                    next.create(Initiator{name(1, 0), {}});
                });
            });
            EXPECT_EQ(failure.code, ErrorCode::NameTaken);
        });
        other = std::thread([&] {
            this->change([&](Change& next) { next.create(Initiator{name(2, 0), {}}); });
        });
        // Long enough for both to queue up and be the next commit.
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    });
    failing.join();
    other.join();
    EXPECT_EQ(now()->version(), 2u);
    EXPECT_EQ(now()->count(CLASSID_INITIATOR), 2u);
    reopen();
    EXPECT_EQ(now()->count(CLASSID_INITIATOR), 2u);
    EXPECT_NE(now()->initiatorByName(name(2, 0)), 0u);
}

TEST_F(ConcurrencyTest, ReadersSeeWholeChangesWhileWritersWrite) {
    // Each change adds a target with a unit and a grant, or takes all three away.
    const Id volume = addVolume();
    const Id initiator = addInitiator();
    const auto other = Array::open(state());
    std::atomic<bool> isDone{false};
    std::vector<std::thread> readers;
    for (Array* reader : {_array.get(), other.get(), other.get()}) {
        readers.emplace_back([&, reader] {
            std::uint64_t last = 0;
            while (!isDone) {
                const SnapshotPtr seen = reader->snapshot();
                ASSERT_GE(seen->version(), last);
                last = seen->version();
                const std::size_t targets = seen->count(CLASSID_TARGET);
                ASSERT_EQ(seen->count(CLASSID_LOGICAL_UNIT), targets);
                ASSERT_EQ(seen->countAssociated(volume, CLASSID_LOGICAL_UNIT), targets);
                ASSERT_EQ(seen->countAssociated(initiator, CLASSID_TARGET), targets);
                for (const Id target : seen->associated(initiator, CLASSID_TARGET)) {
                    ASSERT_NE(seen->target(target), nullptr);
                }
            }
        });
    }
    std::vector<std::thread> writers;
    for (int thread = 0; thread < 3; ++thread) {
        Array* const writer = thread == 2 ? other.get() : _array.get();
        writers.emplace_back([&, writer, thread] {
            for (int i = 0; i < 25; ++i) {
                Id target = 0;
                Id unit = 0;
                writer->change([&](Change& change) {
                    target = change.create(Target{name(thread, i), {}});
                    unit = change.create(LogicalUnit{target, 0, 0, volume, {}});
                    change.grant(target, initiator);
                });
                if (i % 2 == 0) {
                    writer->change([&](Change& change) {
                        change.remove(unit);
                        change.remove(target);
                    });
                }
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    isDone = true;
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(now()->count(CLASSID_TARGET), 3u * 12);
    EXPECT_EQ(other->snapshot()->count(CLASSID_TARGET), 3u * 12);
    EXPECT_TRUE(array().check().empty());
}

TEST_F(ConcurrencyTest, ReadersAreAnsweredWhileAChangeIsBeingMade) {
    addTarget();
    change([&](Change& change) {
        change.create(Target{"iqn.2026-01.com.example:t2", {}});
        std::thread([&] { EXPECT_EQ(now()->count(CLASSID_TARGET), 1u); }).join();
    });
    EXPECT_EQ(now()->count(CLASSID_TARGET), 2u);
}

} // namespace
} // namespace array
