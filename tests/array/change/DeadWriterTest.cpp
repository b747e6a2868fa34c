#include <chrono>
#include <memory>
#include <random>
#include <set>
#include <thread>
#include <unistd.h>

#include "tests/array/ArrayFixture.h"
#include "tests/array/support/Child.h"

// Writers of several processes that are killed, at any moment or while they have the turn.

namespace array {
namespace {

using namespace std::chrono_literals;

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_TARGET;
using Pegasus::CLASSID_VOLUME;

class DeadWriterTest : public ArrayFixture {};

std::string nameOf(int writer, int step) {
    return "iqn.2026-01.com.example:w" + std::to_string(writer) + "-" + std::to_string(step);
}

// One step of a writer, in one change: a target with a unit and a grant is made and, in every
// third step, the one of two steps before goes.
void step(Array& array, int writer, int step, Id volume, Id initiator) {
    array.change([&](Change& change) {
        const Id target = change.create(Target{nameOf(writer, step), {}});
        change.create(LogicalUnit{target, 0, 0, volume, {}});
        change.grant(target, initiator);
        if (step % 3 != 0 || step < 2) {
            return;
        }
        const Id gone = change.snapshot().targetByName(nameOf(writer, step - 2));
        change.remove(change.snapshot().unitByLun(gone, 0));
        change.remove(gone);
    });
}

// What so many steps of a writer leave.
std::set<std::string> targetsAfter(int writer, int steps) {
    std::set<std::string> targets;
    for (int i = 0; i < steps; ++i) {
        targets.insert(nameOf(writer, i));
        if (i % 3 == 0 && i >= 2) {
            targets.erase(nameOf(writer, i - 2));
        }
    }
    return targets;
}

std::set<std::string> targetsOf(const Snapshot& snapshot, int writer) {
    const std::string prefix = nameOf(writer, 0).substr(0, nameOf(writer, 0).size() - 1);
    std::set<std::string> targets;
    snapshot.forEach(CLASSID_TARGET, [&](Id id) {
        if (snapshot.target(id)->name.starts_with(prefix)) {
            targets.insert(snapshot.target(id)->name);
        }
    });
    return targets;
}

TEST_F(DeadWriterTest, WhatWasAcknowledgedToEachOfSeveralWritersIsThereAndNothingElse) {
    constexpr int writers = 3;
    const Id volume = addVolume();
    const Id initiator = addInitiator();
    std::mt19937 random(20260102);
    int steps[writers] = {};
    int acknowledged = 0;
    for (int crash = 0; crash < crashes(); ++crash) {
        std::vector<std::unique_ptr<Child>> children;
        for (int writer = 0; writer < writers; ++writer) {
            children.push_back(std::make_unique<Child>([&, writer](const Child::Voice& voice) {
                const auto mine = Array::open(state());
                for (int i = steps[writer];; ++i, voice.acknowledge()) {
                    step(*mine, writer, i, volume, initiator);
                }
            }));
        }
        for (const auto& child : children) {
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 30000));
            ASSERT_TRUE(child->killNow()) << "a child gave up";
        }

        std::size_t targets = 0;
        for (int writer = 0; writer < writers; ++writer) {
            const int more = children[static_cast<std::size_t>(writer)]->acknowledged();
            acknowledged += more;
            steps[writer] += more;
            const std::set<std::string> found = targetsOf(*now(), writer);
            // The step that was being made may be there or not.
            if (found == targetsAfter(writer, steps[writer] + 1)) {
                ++steps[writer];
            }
            ASSERT_EQ(found, targetsAfter(writer, steps[writer])) << "crash " << crash;
            targets += found.size();
        }
        ASSERT_EQ(now()->countAssociated(volume, CLASSID_LOGICAL_UNIT), targets);
        ASSERT_EQ(now()->countAssociated(initiator, CLASSID_TARGET), targets);
        ASSERT_TRUE(array().check().empty());
    }
    EXPECT_GT(acknowledged, crashes());
    reopen();
    for (int writer = 0; writer < writers; ++writer) {
        EXPECT_EQ(targetsOf(*now(), writer), targetsAfter(writer, steps[writer]));
    }
}

TEST_F(DeadWriterTest, AWriterThatDiesInItsTurnLeavesItToWhoWaits) {
    addVolume();
    for (int round = 0; round < 5; ++round) {
        Child child([&](const Child::Voice& voice) {
            Array::open(state())->change([&](Change& change) {
                change.create(Target{"iqn.2026-01.com.example:never", {}});
                voice.acknowledge(); // of having the turn
                pause();
            });
        });
        ASSERT_TRUE(child.waitForAcknowledgement());
        std::atomic<bool> isDone{false};
        std::jthread waiting([&] {
            addInitiator("h" + std::to_string(round));
            isDone = true;
        });
        std::this_thread::sleep_for(50ms);
        EXPECT_FALSE(isDone);
        EXPECT_EQ(now()->count(CLASSID_VOLUME), 1u); // readers do not wait
        const auto killed = std::chrono::steady_clock::now();
        ASSERT_TRUE(child.killNow());
        waiting.join();
        EXPECT_LT(std::chrono::steady_clock::now() - killed, 5s);
        EXPECT_EQ(now()->count(CLASSID_INITIATOR), static_cast<std::size_t>(round) + 1);
        EXPECT_EQ(now()->count(CLASSID_TARGET), 0u);
    }
    EXPECT_TRUE(array().check().empty());
}

TEST_F(DeadWriterTest, OthersGoOnWhileWritersDie) {
    std::uint32_t made = 0;
    for (int crash = 0; crash < 10; ++crash) {
        Child child([&](const Child::Voice&) {
            const auto mine = Array::open(state());
            for (;;) {
                mine->change([](Change& change) {
                    change.remove(change.create(Initiator{"iqn.2026-01.com.example:h", {}}));
                });
            }
        });
        std::jthread killer([&child, crash] {
            std::this_thread::sleep_for(std::chrono::milliseconds(5 + 7 * crash));
            EXPECT_TRUE(child.killNow());
        });
        for (int i = 0; i < 30; ++i) {
            const std::string name = std::to_string(10000000 + made++);
            change([&](Change& change) { change.create(Volume{name, {}, 0, 0}); });
            EXPECT_NE(now()->volumeByName(name), 0u);
        }
        killer.join();
        EXPECT_EQ(now()->count(CLASSID_VOLUME), made);
        EXPECT_TRUE(array().check().empty());
    }
}

// Whatever stands in the log, and wherever in a change or commit the writer is.
TEST_F(DeadWriterTest, ReadersDoNotNoticeAWriterThatIsStopped) {
    std::mt19937 random(20260103);
    for (int stop = 0; stop < crashes(); ++stop) {
        const std::size_t before = now()->count(CLASSID_VOLUME);
        Child child([&, stop](const Child::Voice& voice) {
            const auto mine = Array::open(state());
            for (int i = 0;; ++i, voice.acknowledge()) {
                mine->change([&](Change& change) {
                    change.create(
                        Volume{std::to_string(100000 + stop) + std::to_string(10000000 + i),
                               std::string(200, 'n'), 0, 0});
                });
            }
        });
        for (int heard = 0; heard < 40; ++heard) {
            ASSERT_TRUE(child.waitForAcknowledgement());
        }
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 5000));
        child.stopNow();
        const auto begin = std::chrono::steady_clock::now();
        for (int i = 0; i < 100; ++i) {
            EXPECT_GE(now()->count(CLASSID_VOLUME), before + 40);
        }
        EXPECT_GE(Array::open(state())->snapshot()->count(CLASSID_VOLUME), before + 40);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s) << stop;
        ASSERT_TRUE(child.killNow());
    }
}

} // namespace
} // namespace array
