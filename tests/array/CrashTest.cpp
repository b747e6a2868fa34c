#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <random>
#include <thread>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/array/ArrayFixture.h"
#include "tests/array/support/History.h"

namespace array {
namespace {

// How often the child is killed: ARRAY_CRASHES of the environment, or few enough for every day.
int crashes() {
    const char* const given = std::getenv("ARRAY_CRASHES");
    return given ? std::atoi(given) : 50;
}

// Where the child says which of its steps were acknowledged.
class Pipe {
public:
    Pipe() {
        if (pipe(_ends) != 0)
            throw std::runtime_error("no pipe");
    }
    ~Pipe() {
        closeWriting();
        close(_ends[0]);
    }
    void acknowledge() const {
        if (write(_ends[1], "+", 1) != 1)
            _exit(1);
    }
    void closeWriting() {
        if (_ends[1] >= 0)
            close(_ends[1]);
        _ends[1] = -1;
    }
    // What was acknowledged until the writer was gone.
    int count() const {
        char bytes[4096];
        int total = 0;
        for (ssize_t size; (size = read(_ends[0], bytes, sizeof bytes)) > 0;)
            total += static_cast<int>(size);
        return total;
    }

private:
    int _ends[2] = {-1, -1};
};

// A process that does `work` until it is killed, or its parent is gone.
pid_t startChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child != 0)
        return child;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    try {
        work();
    } catch (...) {
        _exit(3);
    }
    _exit(2);
}

void killChild(pid_t child) {
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child gave up with " << WEXITSTATUS(status);
}

TEST(Crash, WhatWasAcknowledgedIsThereAndNothingElse) {
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    Array::openOrCreate(state);
    std::mt19937 random(20260101);
    Model model;
    int steps = 0;
    for (int crash = 0; crash < crashes(); ++crash) {
        const auto seed = static_cast<std::uint32_t>(crash);
        Pipe pipe;
        const pid_t child = startChild([&] {
            const auto array = Array::open(state);
            History history(seed);
            for (History::Step step; step.inArray == step.inModel; pipe.acknowledge())
                step = history.step(model, *array);
        });
        ASSERT_GT(child, 0);
        pipe.closeWriting();
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 80000));
        killChild(child);
        ASSERT_FALSE(HasFatalFailure());

        // The step that was being made may be there or not.
        History history(seed);
        const int acknowledged = pipe.count();
        for (int i = 0; i < acknowledged; ++i)
            history.step(model);
        Model oneMore = model;
        history.step(oneMore);
        const auto array = Array::open(state);
        const Model found = Model::of(*array->snapshot());
        if (found.hasObjectsOf(oneMore))
            model = oneMore;
        ASSERT_TRUE(found.hasObjectsOf(model)) << "crash " << crash << " after " << acknowledged;
        ASSERT_TRUE(array->check().empty());
        steps += acknowledged;
    }
    EXPECT_GT(steps, crashes());
}

TEST(Crash, OtherProcessesGoOnWhenAWriterDies) {
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    Array::openOrCreate(state);
    std::uint32_t made = 0;
    for (int crash = 0; crash < 10; ++crash) {
        const pid_t child = startChild([&] {
            const auto array = Array::open(state);
            for (;;)
                array->change([](Change& change) {
                    change.remove(change.create(Initiator{"iqn.2026-01.com.example:h", {}}));
                });
        });
        ASSERT_GT(child, 0);
        const auto array = Array::open(state);
        std::jthread killer([child, crash] {
            std::this_thread::sleep_for(std::chrono::milliseconds(5 + 7 * crash));
            killChild(child);
        });
        for (int i = 0; i < 30; ++i) {
            const std::string name = std::to_string(10000000 + made++);
            array->change([&](Change& change) { change.create(Volume{name, {}, 0, 0}); });
            EXPECT_NE(array->snapshot()->volumeByName(name), 0u);
        }
        killer.join();
        EXPECT_EQ(array->snapshot()->count(Pegasus::CLASSID_VOLUME), made);
        EXPECT_TRUE(array->check().empty());
    }
}

} // namespace
} // namespace array
