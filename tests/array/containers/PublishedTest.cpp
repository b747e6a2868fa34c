#include "array/containers/Published.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace array {
namespace {

struct Counted {
    explicit Counted(int n) : number(n), twice(2 * n) { ++living; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --living; }

    int number;
    int twice;
    static inline std::atomic<int> living{0};
};

TEST(Published, GivesTheLastValueStored) {
    Published<Counted> published(Shared<Counted>::make(1));
    EXPECT_EQ(published.load()->number, 1);
    published.store(Shared<Counted>::make(2));
    EXPECT_EQ(published.load()->number, 2);
}

TEST(Published, AValueLivesAsLongAsAReaderHasIt) {
    {
        Published<Counted> published(Shared<Counted>::make(1));
        const Shared<Counted> first = published.load();
        published.store(Shared<Counted>::make(2));
        EXPECT_EQ(first->number, 1);
        EXPECT_EQ(Counted::living, 2);
    }
    EXPECT_EQ(Counted::living, 0);
}

TEST(Published, AReplacedValueIsReleasedAtOnceWhenNobodyHasIt) {
    Published<Counted> published(Shared<Counted>::make(1));
    published.store(Shared<Counted>::make(2));
    EXPECT_EQ(Counted::living, 1);
}

TEST(Published, ReadersSeeWholeValuesInOrderWhileWritersReplaceThem) {
    constexpr int writes = 20000;
    Published<Counted> published(Shared<Counted>::make(0));
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 3; ++reader) {
        readers.emplace_back([&] {
            int last = 0;
            while (last < writes) {
                const Shared<Counted> value = published.load();
                ASSERT_EQ(value->twice, 2 * value->number);
                ASSERT_GE(value->number, last);
                last = value->number;
            }
        });
    }
    for (int number = 1; number <= writes; ++number) {
        published.store(Shared<Counted>::make(number));
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    published.store(Shared<Counted>::make(0)); // releases what a reader had noted the last time
    EXPECT_EQ(Counted::living, 1);
}

} // namespace
} // namespace array
