#include <cerrno>
#include <iterator>

#include <sqlite3.h>

#include "tests/array/ArrayFixture.h"
#include "tests/array/support/FaultyDisk.h"

namespace array {
namespace {

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_LOGICAL_UNIT;
using Pegasus::CLASSID_VOLUME;

struct Fault {
    const char* name;
    int sqliteCode;
    ErrorCode code;
};

// The disk fails at the first write of a change, at the second, and so on, until a change gets by
// with as many as there are.
class DiskFailureTest : public testing::TestWithParam<Fault> {
protected:
    static void SetUpTestSuite() { FaultyDisk::install(); }
    void TearDown() override { FaultyDisk::works(); }

    void open() { _array = Array::openOrCreate(_directory.path() / "state"); }

    // Calls `make` with the disk failing ever later; returns how often it failed.
    int failAtEachWrite(const std::function<void(Change&)>& make) {
        for (int calls = 0;; ++calls) {
            const std::uint64_t version = _array->snapshot()->version();
            FaultyDisk::failAfter(calls, GetParam().sqliteCode);
            const Failure failure = failureOf([&] { _array->change(make); });
            FaultyDisk::works();
            if (failure.code == ErrorCode{}) {
                EXPECT_EQ(_array->snapshot()->version(), version + 1);
                return calls;
            }
            EXPECT_TRUE(FaultyDisk::hasFailed()) << failure.message;
            EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(GetParam().code));
            EXPECT_NE(failure.message.find("Nothing was changed."), std::string::npos);
            EXPECT_EQ(_array->snapshot()->version(), version);
            if (calls > 1000) {
                return calls;
            }
        }
    }

    TemporaryDirectory _directory;
    std::unique_ptr<Array> _array;
};

TEST_P(DiskFailureTest, AChangeThatFailedLeftNoTrace) {
    open();
    Id volume = 0;
    _array->change([&](Change& change) {
        volume = change.create(Volume{"0A0B", {}, 0, 0});
        const Id target = change.create(Target{"iqn.2026-01.com.example:t1", {}});
        for (std::uint32_t lun = 0; lun < 500; ++lun) {
            change.create(LogicalUnit{target, lun, 0, volume, {}});
        }
    });
    EXPECT_GT(failAtEachWrite([&](Change& change) {
                  change.remove(volume);
                  change.create(Initiator{"iqn.2026-01.com.example:host1", {}});
              }),
              2);
    for (int round = 0; round < 2; ++round) {
        const SnapshotPtr now = _array->snapshot();
        EXPECT_EQ(now->version(), 2u);
        EXPECT_EQ(now->volume(volume), nullptr);
        EXPECT_EQ(now->ids(CLASSID_INITIATOR), std::vector<Id>{0x0D000001});
        EXPECT_EQ(now->count(CLASSID_LOGICAL_UNIT), 500u);
        EXPECT_TRUE(_array->check().empty());
        _array.reset();
        open();
    }
}

TEST_P(DiskFailureTest, AChangeThatFailedIsNotThereAfterACrashEither) {
    open();
    for (int calls = 0;; ++calls) {
        FaultyDisk::failOnceAfter(calls, GetParam().sqliteCode);
        const Failure failure = failureOf([&] {
            _array->change([](Change& change) { change.create(Volume{"0A", {}, 0, 0}); });
        });
        FaultyDisk::works();
        if (failure.code == ErrorCode{}) {
            break;
        }
        ASSERT_LT(calls, 100);
        // What another process would find if this one died now.
        const TemporaryDirectory left;
        for (const char* file : {"array.db", "array.db-wal"}) {
            fs::copy(_directory.path() / "state" / file, left.path() / file);
        }
        EXPECT_EQ(Array::open(left.path())->snapshot()->count(CLASSID_VOLUME), 0u) << calls;
    }
}

TEST_P(DiskFailureTest, AChangeCostsOneFlush) {
    open();
    const int before = FaultyDisk::flushes();
    for (int i = 10; i < 60; ++i) {
        _array->change([&](Change& change) { change.create(Volume{std::to_string(i), {}, 0, 0}); });
    }
    EXPECT_GE(FaultyDisk::flushes() - before, 50);
    EXPECT_LE(FaultyDisk::flushes() - before, 55);
}

TEST_P(DiskFailureTest, TheArrayIsReadableWhileTheDiskFails) {
    open();
    _array->change([&](Change& change) { change.create(Volume{"0A0B", {}, 0, 0}); });
    FaultyDisk::failAfter(0, GetParam().sqliteCode);
    EXPECT_NE(failureOf([&] {
                  _array->change([](Change& change) { change.create(Volume{"0C", {}, 0, 0}); });
              }).code,
              ErrorCode{});
    EXPECT_EQ(_array->snapshot()->count(CLASSID_VOLUME), 1u);
}

TEST_P(DiskFailureTest, AChangeThatHidesAFailureFromTheArrayFailsAllTheSame) {
    open();
    FaultyDisk::failAfter(0, GetParam().sqliteCode);
    const Failure failure = failureOf([&] {
        _array->change([](Change& change) {
            // Enough for SQLite to write before the commit.
            for (int i = 0; i < 200000; ++i) {
                if (failureOf([&] {
                        change.create(Volume{"0A" + std::to_string(10000000 + i), {}, 0, 0});
                    }).code != ErrorCode{}) {
                    break;
                }
            }
        });
    });
    FaultyDisk::works();
    EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(GetParam().code));
    EXPECT_EQ(_array->snapshot()->count(CLASSID_VOLUME), 0u);
    EXPECT_TRUE(_array->check().empty());
}

TEST_P(DiskFailureTest, AnArrayThatCouldNotBeMadeCanBeMadeLater) {
    for (int calls = 0;; ++calls) {
        FaultyDisk::failAfter(calls, GetParam().sqliteCode);
        const Failure failure = failureOf([&] { open(); });
        const bool hasFailed = FaultyDisk::hasFailed();
        FaultyDisk::works();
        if (!hasFailed) {
            break;
        }
        if (failure.code != ErrorCode{}) {
            EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(GetParam().code));
        }
        ASSERT_LT(calls, 1000);
    }
    EXPECT_TRUE(_array->check().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Faults, DiskFailureTest,
    testing::Values(Fault{"Full", SQLITE_FULL, ErrorCode::StateFull},
                    Fault{"WriteError", SQLITE_IOERR_WRITE, ErrorCode::StateFailed},
                    Fault{"FlushError", SQLITE_IOERR_FSYNC, ErrorCode::StateFailed}),
    [](const auto& fault) { return fault.param.name; });

struct DirectoryFault {
    int error;
    ErrorCode code;
};

class DirectoryFailureTest : public testing::TestWithParam<DirectoryFault> {
protected:
    void TearDown() override { FaultyDisk::works(); }

    static std::ptrdiff_t openFiles() {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    }

    TemporaryDirectory _directory;
};

TEST_P(DirectoryFailureTest, AnArrayWhoseNameIsNotSafeIsNotAcknowledged) {
    const auto create = [&] { Array::openOrCreate(_directory.path()); };
    const std::ptrdiff_t before = openFiles();
    FaultyDisk::failDirectoryFlushes(GetParam().error);
    const Failure failure = failureOf(create);
    EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(GetParam().code));
    EXPECT_NE(failure.message.find(_directory.path().string() + ": "), std::string::npos);
    EXPECT_EQ(openFiles(), before);
    FaultyDisk::works();
    EXPECT_NO_THROW(create());
}

TEST_P(DirectoryFailureTest, ABackupWhoseNameIsNotSafeIsNotAcknowledged) {
    const fs::path copy = _directory.path() / "copy.db";
    const auto array = Array::openOrCreate(_directory.path());
    FaultyDisk::failDirectoryFlushes(GetParam().error);
    const Failure failure = failureOf([&] { array->backup(copy); });
    EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(GetParam().code));
    EXPECT_FALSE(fs::exists(copy));
    FaultyDisk::works();
    EXPECT_NO_THROW(array->backup(copy));
}

INSTANTIATE_TEST_SUITE_P(Errors, DirectoryFailureTest,
                         testing::Values(DirectoryFault{EIO, ErrorCode::StateFailed},
                                         DirectoryFault{ENOSPC, ErrorCode::StateFull}));

TEST(FilesThatGoTest, InTheMiddleOfACommitTakeItWithThem) {
    FaultyDisk::install();
    const TemporaryDirectory directory;
    const fs::path state = directory.path() / "state";
    const auto array = Array::openOrCreate(state);
    FaultyDisk::atNextFlush([&] { fs::rename(state, directory.path() / "aside"); });
    const Failure failure = failureOf([&] {
        array->change([](Change& change) { change.create(Volume{"0A", {}, 0, 0}); });
    });
    EXPECT_EQ(failure.code, ErrorCode::StateGone);
    EXPECT_NE(failure.message.find("The change went into the files that are gone."),
              std::string::npos)
        << failure.message;
    EXPECT_EQ(array->snapshot()->count(CLASSID_VOLUME), 0u);
}

} // namespace
} // namespace array
