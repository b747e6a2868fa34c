#include "array/containers/PersistentMap.h"

#include <map>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace array {
namespace {

using Model = std::map<std::uint32_t, int>;
using Map = PersistentMap<int>;

Model contentOf(const Map& map) {
    Model content;
    std::uint32_t last = 0;
    map.forEach([&](std::uint32_t key, int value) {
        EXPECT_TRUE(content.empty() || key > last) << key << " after " << last;
        last = key;
        content[key] = value;
    });
    return content;
}

TEST(PersistentMap, AnEmptyMapHasNothing) {
    Map map;
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.size(), 0u);
    EXPECT_EQ(map.find(0), nullptr);
    EXPECT_FALSE(map.erase(0));
    EXPECT_TRUE(contentOf(map).empty());
}

TEST(PersistentMap, HoldsTheSmallestAndTheLargestKey) {
    Map map;
    map.set(0xFFFFFFFF, 1);
    map.set(0, 2);
    EXPECT_EQ(contentOf(map), (Model{{0, 2}, {0xFFFFFFFF, 1}}));
    EXPECT_TRUE(map.erase(0));
    EXPECT_EQ(map.find(0), nullptr);
    EXPECT_EQ(*map.find(0xFFFFFFFF), 1);
    EXPECT_TRUE(map.erase(0xFFFFFFFF));
    EXPECT_TRUE(map.empty());
}

TEST(PersistentMap, ReplacesTheValueOfAKeyThatIsThere) {
    Map map;
    map.set(7, 1);
    map.set(7, 2);
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(*map.find(7), 2);
}

TEST(PersistentMap, ACopyKeepsItsContentWhenTheOriginalChanges) {
    Map map;
    for (std::uint32_t key = 0; key < 5000; ++key) {
        map.set(key, 1);
    }
    const Map copy = map;
    for (std::uint32_t key = 0; key < 5000; key += 2) {
        map.set(key, 2);
    }
    for (std::uint32_t key = 1; key < 5000; key += 2) {
        map.erase(key);
    }
    EXPECT_EQ(copy.size(), 5000u);
    copy.forEach([](std::uint32_t key, int value) { ASSERT_EQ(value, 1) << key; });
    EXPECT_EQ(map.size(), 2500u);
}

TEST(PersistentMap, ReleasesTheValuesItNoLongerHolds) {
    const auto value = std::make_shared<int>(1);
    {
        PersistentMap<std::shared_ptr<int>> map;
        for (std::uint32_t key = 0; key < 1000; ++key) {
            map.set(key * 77, value);
        }
        auto copy = map;
        for (std::uint32_t key = 0; key < 1000; ++key) {
            ASSERT_TRUE(map.erase(key * 77));
        }
        EXPECT_EQ(value.use_count(), 1001);
    }
    EXPECT_EQ(value.use_count(), 1);
}

TEST(PersistentMap, AValueChangedInPlaceStaysAsItWasInCopies) {
    Map map;
    for (std::uint32_t key = 0; key < 1000; ++key) {
        map.set(key, 1);
    }
    const Map copy = map;

    map.change(77) = 2;

    EXPECT_EQ(*map.find(77), 2);
    EXPECT_EQ(*map.find(78), 1);
    EXPECT_EQ(*copy.find(77), 1);
}

TEST(PersistentMap, AMapOfMapsKeepsNoEmptyOnes) {
    PersistentMap<Map> maps;
    setIn(maps, 1, 10, 100);
    setIn(maps, 1, 11, 110);
    const PersistentMap<Map> copy = maps;

    eraseIn(maps, 1, 10);
    eraseIn(maps, 2, 10);
    ASSERT_TRUE(maps.contains(1));
    EXPECT_FALSE(maps.find(1)->contains(10));
    eraseIn(maps, 1, 11);

    EXPECT_TRUE(maps.empty());
    EXPECT_EQ(copy.find(1)->size(), 2U);
}

TEST(PersistentMap, ASetTellsMembersFromOthers) {
    PersistentSet set;
    set.set(3, {});
    set.set(3, {});
    set.set(0x0E000001, {});
    EXPECT_EQ(set.size(), 2u);
    EXPECT_TRUE(set.contains(3));
    EXPECT_FALSE(set.contains(4));
}

// How keys are drawn: dense serials, ids of two classes, hashes, hashes that differ in high bits.
struct Keys {
    std::string name;
    std::uint32_t mask;
    std::uint32_t shift;
};

class PersistentMapModel : public testing::TestWithParam<Keys> {};

TEST_P(PersistentMapModel, BehavesAsAnOrderedMapDoesAlsoInOldCopies) {
    std::mt19937 random(20260101);
    Map map;
    Model model;
    std::vector<std::pair<Map, Model>> copies;
    for (int step = 0; step < 60000; ++step) {
        const std::uint32_t key = (static_cast<std::uint32_t>(random()) & GetParam().mask)
                                  << GetParam().shift;
        const bool grows = (step / 10000) % 2 == 0;
        if (random() % 10 < (grows ? 7u : 2u)) {
            map.set(key, step);
            model[key] = step;
        } else {
            // Half of the time a key that is there, so that the map empties again.
            const auto at = model.lower_bound(key);
            const std::uint32_t gone = at != model.end() && step % 2 == 0 ? at->first : key;
            ASSERT_EQ(map.erase(gone), model.erase(gone) == 1);
        }
        ASSERT_EQ(map.size(), model.size());
        ASSERT_TRUE(model.empty() || map.firstKey() == model.begin()->first);
        const auto found = model.find(key);
        const int* value = map.find(key);
        ASSERT_EQ(value != nullptr, found != model.end());
        ASSERT_TRUE(!value || *value == found->second);
        if (step % 6000 == 0) {
            copies.emplace_back(map, model);
        }
    }
    for (const auto& [copy, content] : copies) {
        EXPECT_EQ(contentOf(copy), content);
    }
    EXPECT_EQ(contentOf(map), model);
}

INSTANTIATE_TEST_SUITE_P(Keys, PersistentMapModel,
                         testing::Values(Keys{"dense", 0x0FFF, 0}, Keys{"spread", 0xFFFFFFFF, 0},
                                         Keys{"high", 0xFFF, 20}, Keys{"few", 0x1F, 3},
                                         Keys{"twoClasses", 0x01000FFF, 0}),
                         [](const auto& keys) { return keys.param.name; });

TEST(PersistentMap, CopiesAreReadByOtherThreadsWhileTheOriginalChanges) {
    Map map;
    for (std::uint32_t key = 0; key < 2000; ++key) {
        map.set(key, 0);
    }
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader) {
        readers.emplace_back([copy = map]() mutable {
            for (int round = 0; round < 20; ++round) {
                const Map mine = copy;
                std::size_t seen = 0;
                mine.forEach([&](std::uint32_t, int value) { seen += value == 0 ? 1 : 0; });
                EXPECT_EQ(seen, 2000u);
            }
            copy = Map();
        });
    }
    for (int round = 1; round < 20; ++round) {
        for (std::uint32_t key = 0; key < 2000; ++key) {
            map.set(key, round);
        }
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(*map.find(0), 19);
}

} // namespace
} // namespace array
