#include "tests/array/ArrayFixture.h"
#include "tests/array/support/Child.h"
#include "tests/array/support/FaultyDisk.h"
#include "tests/array/support/OlderFormat.h"

// A process that dies in the middle of a write to the disk: of the first one that a change makes,
// then of the second, and so on.

namespace array {
namespace {

using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_TARGET;

// One after the other; `find` sees what is left after each death. Returns how many there were.
int dieInEachWrite(const std::function<void()>& work, const std::function<void(bool)>& find) {
    FaultyDisk::install();
    for (int writes = 0; writes < 1000; ++writes) {
        Child child([&](const Child::Voice& voice) {
            FaultyDisk::dieAfter(writes);
            work();
            voice.acknowledge();
        });
        const bool isDone = child.finish();
        find(child.acknowledged() != 0);
        if (isDone) {
            return writes;
        }
    }
    return 1000;
}

TEST(Death, InAnyWriteOfAChangeLeavesAllOfItOrNothing) {
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    const Id volume = [&] {
        Id made = 0;
        Array::openOrCreate(state)->change([&](Change& change) {
            made = change.create(Volume{"0A0B", {}, 0, 0});
        });
        return made;
    }();
    constexpr std::uint32_t units = 300; // some pages of the database
    int partly = 0;
    const int deaths = dieInEachWrite(
        [&] {
            Array::open(state)->change([&](Change& change) {
                for (const Id unit : change.snapshot().ids(CLASSID_LOGICAL_UNIT)) {
                    change.remove(unit);
                }
                for (const Id target : change.snapshot().ids(CLASSID_TARGET)) {
                    change.remove(target);
                }
                const Id target = change.create(Target{"iqn.2026-01.com.example:t1", {}});
                for (std::uint32_t lun = 0; lun < units; ++lun) {
                    change.create(LogicalUnit{target, lun, 0, volume, {}});
                }
            });
        },
        [&, version = std::uint64_t{1}, left = std::vector<Id>()](bool isAcknowledged) mutable {
            const auto array = Array::open(state);
            const SnapshotPtr now = array->snapshot();
            const std::vector<Id> targets = now->ids(CLASSID_TARGET);
            if (now->version() == version) {
                EXPECT_FALSE(isAcknowledged);
                EXPECT_EQ(targets, left);
            } else {
                EXPECT_EQ(now->version(), version + 1);
                EXPECT_EQ(targets.size(), 1u);
                EXPECT_NE(targets, left);
                EXPECT_EQ(now->count(CLASSID_LOGICAL_UNIT), units);
                partly += isAcknowledged ? 0 : 1;
            }
            version = now->version();
            left = targets;
            EXPECT_TRUE(array->check().empty());
        });
    EXPECT_GT(deaths, 10);
    EXPECT_GT(partly, 0); // some died between the commit and its acknowledgement
}

TEST(Death, InAnyWriteOfANewArrayLeavesAllOfItOrNothing) {
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    const int deaths = dieInEachWrite([&] { Array::openOrCreate(state); },
                                      [&](bool isAcknowledged) {
                                          if (!fs::exists(state / "array.db")) {
                                              EXPECT_FALSE(isAcknowledged);
                                              return;
                                          }
                                          EXPECT_TRUE(Array::open(state)->check().empty());
                                          fs::remove_all(state);
                                      });
    EXPECT_GT(deaths, 10);
}

TEST(Death, InAnyWriteOfAMigrationLeavesTheOlderFormatOrTheNewer) {
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    Array::openOrCreate(state)->change([](Change& change) {
        change.create(Volume{"0A0B", {}, 0, 0});
    });
    makeOlder(state / "array.db");
    const int deaths = dieInEachWrite(
        [&] { Array::open(state); },
        [&](bool isAcknowledged) {
            const int format = formatOf(state / "array.db");
            EXPECT_TRUE(format == 2 || (format == 1 && !isAcknowledged)) << format;
            EXPECT_EQ(Array::open(state)->snapshot()->count(Pegasus::CLASSID_VOLUME), 1u);
            EXPECT_TRUE(Array::open(state)->check().empty());
            if (!isAcknowledged) {
                makeOlder(state / "array.db");
            }
        });
    EXPECT_GT(deaths, 3);
}

} // namespace
} // namespace array
