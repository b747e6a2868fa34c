#include "server/dispatch/ObjectQueue.h"

#include <atomic>
#include <stdexcept>
#include <thread>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using namespace std::chrono_literals;

namespace smisd {
namespace {

PulledObject object(const std::string& className) {
    return {CIMObjectPath(String(), CIMNamespaceName(), CIMName(className.c_str())), CIMInstance()};
}

std::string nameOf(const std::optional<PulledObject>& pulled) {
    return pulled ? std::string(pulled->path.getClassName().getString().getCString()) : "end";
}

CIMStatusCode codeOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const CIMException& error) {
        return error.getCode();
    }
    return CIM_ERR_SUCCESS;
}

TEST(ObjectQueue, GivesObjectsInOrderAndThenTheEnd) {
    ObjectQueue queue(1h);
    queue.push(object("A"));
    queue.push(object("B"));
    queue.end(nullptr);
    queue.beginPull();
    EXPECT_EQ(nameOf(queue.pop()), "A");
    EXPECT_FALSE(queue.atEnd());
    EXPECT_EQ(nameOf(queue.pop()), "B");
    EXPECT_TRUE(queue.atEnd());
    EXPECT_EQ(nameOf(queue.pop()), "end");
}

TEST(ObjectQueue, GivesTheErrorAfterTheObjects) {
    ObjectQueue queue(1h);
    queue.push(object("A"));
    queue.end(std::make_exception_ptr(std::runtime_error("late")));
    queue.requireNoError(); // there is an object before it
    EXPECT_EQ(nameOf(queue.pop()), "A");
    EXPECT_FALSE(queue.atEnd());
    EXPECT_THROW(queue.requireNoError(), std::runtime_error);
    EXPECT_THROW(queue.pop(), std::runtime_error);
}

TEST(ObjectQueue, HoldsItsProducerBack) {
    ObjectQueue queue(1h);
    std::atomic<int> pushed{0};
    std::thread producer([&] {
        for (int i = 0; i < 1000; ++i) {
            queue.push(object("A"));
            ++pushed;
        }
        queue.end(nullptr);
    });
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(pushed, static_cast<int>(ObjectQueue::maximumSize));
    int popped = 0;
    while (queue.pop()) {
        ++popped;
    }
    producer.join();
    EXPECT_EQ(popped, 1000);
}

TEST(ObjectQueue, WaitsForItsProducer) {
    ObjectQueue queue(1h);
    std::thread producer([&] {
        std::this_thread::sleep_for(50ms);
        queue.push(object("A"));
        std::this_thread::sleep_for(50ms);
        queue.end(nullptr);
    });
    EXPECT_EQ(nameOf(queue.pop()), "A");
    EXPECT_TRUE(queue.atEnd());
    producer.join();
}

TEST(ObjectQueue, ClosingItEndsTheProducer) {
    ObjectQueue queue(1h);
    std::thread closer([&] {
        std::this_thread::sleep_for(50ms);
        queue.close();
    });
    EXPECT_THROW(
        for (;;) { queue.push(object("A")); }, Abandoned);
    closer.join();
    EXPECT_TRUE(queue.isClosed());
}

TEST(ObjectQueue, ClosingItEndsARequestThatPulls) {
    ObjectQueue queue(1h);
    queue.beginPull();
    std::thread closer([&] {
        std::this_thread::sleep_for(50ms);
        queue.close();
    });
    EXPECT_EQ(codeOf([&] { queue.pop(); }), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
    closer.join();
}

TEST(ObjectQueue, ClosesWhenTheClientTakesTooLong) {
    ObjectQueue queue(50ms);
    EXPECT_FALSE(queue.isClosed());
    queue.awaitClose();
    EXPECT_TRUE(queue.isClosed());
}

TEST(ObjectQueue, ClosesALateProducer) {
    ObjectQueue queue(50ms);
    EXPECT_THROW(
        for (;;) { queue.push(object("A")); }, Abandoned);
}

TEST(ObjectQueue, TheTimeRunsBetweenPullsOnly) {
    ObjectQueue queue(50ms);
    queue.beginPull();
    std::this_thread::sleep_for(100ms);
    EXPECT_FALSE(queue.isClosed());
    queue.endPull();
    EXPECT_FALSE(queue.isClosed());
    std::this_thread::sleep_for(100ms);
    EXPECT_TRUE(queue.isClosed());
}

TEST(ObjectQueue, IsPulledByOneRequestAtATime) {
    ObjectQueue queue(1h);
    queue.beginPull();
    EXPECT_EQ(codeOf([&] { queue.beginPull(); }), CIM_ERR_FAILED);
    queue.endPull();
    EXPECT_EQ(codeOf([&] { queue.beginPull(); }), CIM_ERR_SUCCESS);
}

} // namespace
} // namespace smisd
