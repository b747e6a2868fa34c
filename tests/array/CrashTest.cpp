#include <chrono>
#include <random>
#include <thread>

#include "tests/array/ArrayFixture.h"
#include "tests/array/support/Child.h"
#include "tests/array/support/History.h"

namespace array {
namespace {

TEST(Crash, WhatWasAcknowledgedIsThereAndNothingElse) {
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    Array::openOrCreate(state);
    std::mt19937 random(20260101);
    Model model;
    int steps = 0;
    for (int crash = 0; crash < crashes(); ++crash) {
        const auto seed = static_cast<std::uint32_t>(crash);
        Child child([&](const Child::Voice& voice) {
            const auto array = Array::open(state);
            History history(seed);
            for (History::Step step; step.inArray == step.inModel; voice.acknowledge()) {
                step = history.step(model, *array);
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 80000));
        ASSERT_TRUE(child.killNow()) << "the child gave up";

        // The step that was being made may be there or not.
        History history(seed);
        const int acknowledged = child.acknowledged();
        for (int i = 0; i < acknowledged; ++i) {
            history.step(model);
        }
        Model oneMore = model;
        history.step(oneMore);
        const auto array = Array::open(state);
        const Model found = Model::of(*array->snapshot());
        if (found.hasObjectsOf(oneMore)) {
            model = oneMore;
        }
        ASSERT_TRUE(found.hasObjectsOf(model)) << "crash " << crash << " after " << acknowledged;
        ASSERT_TRUE(array->check().empty());
        steps += acknowledged;
    }
    EXPECT_GT(steps, crashes());
}

} // namespace
} // namespace array
