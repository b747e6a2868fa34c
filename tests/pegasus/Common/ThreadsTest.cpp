// What the thread rule of the value types promises: several threads read and copy one value. A
// fault shows under ThreadSanitizer, and as a wrong count as a crash anywhere.

#include <thread>
#include <vector>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

// Runs `action` in several threads at once, again and again.
template<class F>
static void atOnce(F action) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 2000; ++round) {
                action();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(Threads, OneStringIsCopiedReadAndItsCopiesChanged) {
    const String shared("shared text");
    atOnce([&] {
        String copy(shared);
        copy.append(Char16('!'));
        ASSERT_EQ(copy.size(), shared.size() + 1);
        String other;
        other = shared;
        ASSERT_TRUE(String::equalNoCase(other, shared));
    });
    EXPECT_EQ(shared, "shared text");
}

TEST(Threads, OneNameIsMadeCopiedAndDropped) {
    atOnce([&] {
        const CIMName name("MadeByAllThreads");
        const CIMName copy(name);
        ASSERT_EQ(copy.getString().size(), 16u);
    });
    EXPECT_EQ(CIMName("MadeByAllThreads").getString(), "MadeByAllThreads");
}

TEST(Threads, OneArrayIsCopiedReadAndItsCopiesChanged) {
    const Array<String> shared(3, String("element"));
    atOnce([&] {
        Array<String> copy(shared);
        ASSERT_EQ(copy.size(), 3u);
        copy[1].append(Char16('!'));
        copy.append(shared[0]);
        ASSERT_EQ(shared[1].size(), 7u);
    });
    EXPECT_EQ(shared[1], "element");
}

TEST(Threads, OnePathIsCopiedReadAndItsCopiesChanged) {
    const CIMObjectPath shared("//h/root:C.a=1,b=\"x\"");
    atOnce([&] {
        CIMObjectPath copy(shared);
        ASSERT_EQ(copy.getKeyBindings().size(), 2u);
        copy.setClassName(CIMName("D"));
        ASSERT_TRUE(shared == CIMObjectPath(shared));
    });
    EXPECT_EQ(shared.toString(), "//h/root:C.a=1,b=\"x\"");
}

TEST(Threads, OneValueIsCopiedReadAndItsCopiesChanged) {
    const CIMValue shared(String("value"));
    atOnce([&] {
        CIMValue copy(shared);
        String text;
        copy.get(text);
        ASSERT_EQ(text.size(), 5u);
        copy.set(Uint8(1));
        ASSERT_FALSE(copy == shared);
    });
}

TEST(Threads, OneInstanceIsReadThroughCopiesOfItsHandle) {
    CIMInstance instance(CIMName("C"));
    instance.addProperty(CIMProperty(CIMName("p"), CIMValue(String("v"))));
    const CIMConstInstance shared(instance);
    atOnce([&] {
        const CIMConstInstance copy(shared);
        ASSERT_EQ(copy.getProperty(copy.findProperty(CIMName("p"))).getValue(),
                  CIMValue(String("v")));
        ASSERT_TRUE(copy.identical(shared));
    });
}

TEST(Threads, OnePropertyIsAddedToManyInstances) {
    const CIMProperty shared(CIMName("p"), CIMValue(Uint8(1)));
    atOnce([&] {
        CIMInstance instance(CIMName("C"));
        instance.addProperty(shared);
        ASSERT_EQ(instance.getPropertyCount(), 1u);
    });
}
