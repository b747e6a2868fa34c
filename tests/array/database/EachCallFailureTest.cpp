#include <sqlite3.h>

#include "tests/array/ArrayFixture.h"
#include "tests/array/support/FaultyDisk.h"
#include "tests/array/support/FaultySqlite.h"

// What the array does when any one call fails on the way: of SQLite to the disk, or of the array to
// SQLite. In each test the first call fails, then the second, and so on, until the operation gets
// by with as many as there are.

namespace array {
namespace {

using Pegasus::CLASSID_INITIATOR;
using Pegasus::CLASSID_VOLUME;

// An array that has not yet seen what another process did last.
struct Scene {
    fs::path directory;
    fs::path state;
    Array& array;
};

// Makes an initiator in the place of the one that is there.
void replaceInitiator(Change& change) {
    const std::vector<Id> before = change.snapshot().ids(CLASSID_INITIATOR);
    change.remove(before.at(0));
    change.create(Initiator{"iqn.2026-01.com.example:host1", "a secret of enough bytes"});
}

struct Operation {
    const char* name;
    void (*run)(Scene&);
    bool makesVersion;
};

constexpr Operation operations[] = {
    {"Open", [](Scene& scene) { Array::open(scene.state); }, false},
    {"Follow", [](Scene& scene) { scene.array.snapshot(); }, false},
    {"Change", [](Scene& scene) { scene.array.change(replaceInitiator); }, true},
    {"RefusedChange",
     [](Scene& scene) {
         try {
             scene.array.change([](Change& change) {
                 change.create(Volume{"0A0B", {}, 0, 0});
                 throw std::domain_error("changed my mind");
             });
         } catch (const std::domain_error&) {
         }
     },
     false},
    {"Check", [](Scene& scene) { scene.array.check(); }, false},
    {"Backup",
     [](Scene& scene) {
         std::error_code ignored;
         fs::remove(scene.directory / "copy.db", ignored);
         scene.array.backup(scene.directory / "copy.db");
     },
     false},
    {"Create",
     [](Scene& scene) {
         fs::remove_all(scene.directory / "new");
         Array::openOrCreate(scene.directory / "new");
     },
     false},
};

struct Fault {
    const char* name;
    void (*begin)(int calls);
    bool (*hasStruck)();
};

using Call = FaultyDisk::Call;

constexpr Fault faults[] = {
    {"DiskFull", [](int calls) { FaultyDisk::failOnceAfter(calls, SQLITE_FULL); },
     FaultyDisk::hasFailed},
    {"DiskStaysFull", [](int calls) { FaultyDisk::failAfter(calls, SQLITE_FULL); },
     FaultyDisk::hasFailed},
    {"WriteError", [](int calls) { FaultyDisk::failOnceAfter(calls, SQLITE_IOERR_WRITE); },
     FaultyDisk::hasFailed},
    {"ReadError",
     [](int calls) { FaultyDisk::failOnceAfter(calls, SQLITE_IOERR_READ, Call::Read); },
     FaultyDisk::hasFailed},
    {"LockError",
     [](int calls) { FaultyDisk::failOnceAfter(calls, SQLITE_IOERR_LOCK, Call::Lock); },
     FaultyDisk::hasFailed},
    {"OpenError", [](int calls) { FaultyDisk::failOnceAfter(calls, SQLITE_CANTOPEN, Call::Open); },
     FaultyDisk::hasFailed},
    {"SqliteOutOfMemory", [](int calls) { FaultySqlite::failOnceAfter(calls, SQLITE_NOMEM); },
     FaultySqlite::hasFailed},
    {"SqliteFull", [](int calls) { FaultySqlite::failOnceAfter(calls, SQLITE_FULL); },
     FaultySqlite::hasFailed},
    {"SqliteError", [](int calls) { FaultySqlite::failOnceAfter(calls, SQLITE_IOERR); },
     FaultySqlite::hasFailed},
};

void end() {
    FaultyDisk::works();
    FaultySqlite::works();
}

class EachCallFailureTest : public testing::TestWithParam<std::tuple<Operation, Fault>> {
protected:
    static void SetUpTestSuite() { FaultyDisk::install(); }
    EachCallFailureTest() {
        _array = Array::openOrCreate(state());
        _array->change([](Change& change) {
            change.create(Initiator{"iqn.2026-01.com.example:host1", "a secret of enough bytes"});
            change.create(Volume{"0A0B0C", {}, 0, 0});
        });
        _other = Array::open(state());
    }
    void TearDown() override { end(); }

    fs::path state() const { return _directory.path() / "state"; }

    TemporaryDirectory _directory;
    std::unique_ptr<Array> _array, _other;
};

TEST_P(EachCallFailureTest, IsSaidAndLeavesTheArrayAsItWas) {
    const auto& [operation, fault] = GetParam();
    const Id volume = _array->snapshot()->volumeByName("0A0B0C");
    Scene scene{_directory.path(), state(), *_array};
    for (int calls = 0;; ++calls) {
        ASSERT_LT(calls, 2000);
        const auto size = static_cast<std::uint64_t>(calls);
        _other->change([&](Change& change) {
            change.modify(volume, Volume{"0A0B0C", {}, size, 0});
        });
        const std::uint64_t version = _other->snapshot()->version();

        fault.begin(calls);
        const Failure failure = failureOf([&, &run = operation.run] { run(scene); });
        const bool hasStruck = fault.hasStruck();
        end();

        if (failure.code != ErrorCode{}) {
            EXPECT_TRUE(hasStruck) << failure.message;
            EXPECT_GE(failure.code, ErrorCode::StateMissing) << failure.message;
            EXPECT_NE(failure.message.find(".db"), std::string::npos) << failure.message;
        }
        if (failure.code != ErrorCode{} && fs::exists(_directory.path() / "new")) {
            for (const auto& left : fs::directory_iterator(_directory.path() / "new")) {
                EXPECT_EQ(left.path().string().find(".db.new-"), std::string::npos) << left.path();
            }
        }
        const bool isMade = operation.makesVersion && failure.code == ErrorCode{};
        const auto fresh = Array::open(state());
        for (Array* each : {_array.get(), _other.get(), fresh.get()}) {
            const SnapshotPtr now = each->snapshot();
            ASSERT_GE(now->version(), version + (isMade ? 1 : 0)) << calls;
            ASSERT_EQ(now->volume(volume)->size, size) << calls;
            ASSERT_EQ(now->count(CLASSID_VOLUME), 1u) << calls;
            ASSERT_EQ(now->count(CLASSID_INITIATOR), 1u) << calls;
        }
        ASSERT_EQ(_other->check(), std::vector<std::string>()) << calls;
        if (!hasStruck) {
            EXPECT_EQ(failure.code, ErrorCode{}) << failure.message;
            break;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Calls, EachCallFailureTest,
                         testing::Combine(testing::ValuesIn(operations), testing::ValuesIn(faults)),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) +
                                    std::get<1>(test.param).name;
                         });

} // namespace
} // namespace array
