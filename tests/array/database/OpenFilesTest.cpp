#include "array/database/OpenFiles.h"

#include <fstream>
#include <iterator>

#include "array/database/StateDirectory.h"
#include "tests/array/ArrayFixture.h"

// Files that are removed or replaced while the array is open.

namespace array {
namespace {

using Pegasus::CLASSID_TARGET;

class OpenFilesTest : public ArrayFixture {
protected:
    OpenFilesTest() { addTarget("t1"); }

    fs::path aside() const { return _directory.path() / "aside"; }

    // Changes are refused, and the reason is told; what is known can be read.
    void expectGone(const std::string& reason) {
        const std::string advice = "Put the files back that were there, or restart this program "
                                   "to use those that are there now.";
        for (int i = 0; i < 2; ++i) {
            expectFailure(ErrorCode::StateGone,
                          state().string() + ": " + reason + " Nothing was changed. " + advice,
                          [&] { addTarget("t2"); });
            EXPECT_EQ(array().whyNotHealthy(),
                      state().string() + ": " + reason + " Changes are refused. " + advice);
            EXPECT_EQ(now()->count(CLASSID_TARGET), 1u);
        }
    }
};

std::string textOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

constexpr const char* gone = "array.db, which this program has open, is gone.";
constexpr const char* replaced =
    "another array.db stands in the place of the one that this program has open.";

TEST_F(OpenFilesTest, AreWellAtFirst) {
    EXPECT_EQ(array().whyNotHealthy(), "");
}

TEST_F(OpenFilesTest, AStateDirectoryThatIsRemovedTakesNoChanges) {
    fs::remove_all(state());
    expectGone(gone);
}

TEST_F(OpenFilesTest, ADatabaseThatIsRemovedTakesNoChanges) {
    fs::remove(databaseIn(state()));
    expectGone(gone);
}

TEST_F(OpenFilesTest, AnotherArrayInThePlaceTakesNoChangesOfThisOne) {
    Array::openOrCreate(aside());
    fs::rename(databaseIn(aside()), databaseIn(state()));
    expectGone(replaced);
}

TEST_F(OpenFilesTest, AnotherStateDirectoryInThePlaceTakesNoChangesOfThisOne) {
    fs::rename(state(), _directory.path() / "moved");
    Array::openOrCreate(state());
    expectGone(replaced);
    EXPECT_EQ(Array::open(state())->snapshot()->count(CLASSID_TARGET), 0u);
}

TEST_F(OpenFilesTest, ALogThatIsRemovedTakesNoChanges) {
    fs::remove(state() / "array.db-wal");
    expectGone("array.db-wal, which this program has open, is gone.");
}

TEST_F(OpenFilesTest, AnotherLogInThePlaceKeepsTheOldOneOutOfTheDatabase) {
    const auto other = Array::openOrCreate(aside());
    Id initiator = 0;
    other->change([&](Change& change) {
        initiator = change.create(Initiator{"iqn.2026-01.com.example:h", "a secret of theirs"});
    });
    const fs::path log = aside() / "array.db-wal";
    fs::rename(log, aside() / "old");
    std::ofstream(log) << "of others";
    const std::string before = textOf(databaseIn(aside()));
    const Failure failure =
        failureOf([&] { other->change([&](Change& change) { change.remove(initiator); }); });
    EXPECT_EQ(failure.code, ErrorCode::StateGone);
    EXPECT_TRUE(textOf(databaseIn(aside())) == before) << "changed by a refused change";
}

TEST_F(OpenFilesTest, AnotherLogInThePlaceIsLeftAloneAtTheEnd) {
    auto other = Array::openOrCreate(aside());
    other->change([](Change& change) { change.create(Target{"iqn.2026-01.com.example:t", {}}); });
    const fs::path log = aside() / "array.db-wal";
    fs::rename(log, aside() / "old");
    std::ofstream(log) << "of others";
    const std::string before = textOf(databaseIn(aside()));
    other.reset();
    EXPECT_TRUE(textOf(databaseIn(aside())) == before) << "changed at the end";
    EXPECT_EQ(textOf(log), "of others");
}

TEST_F(OpenFilesTest, FilesThatAreBackAreUsedAgain) {
    fs::rename(state(), aside());
    expectGone(gone);
    fs::rename(aside(), state());
    EXPECT_EQ(array().whyNotHealthy(), "");
    addTarget("t2");
    EXPECT_EQ(Array::open(state())->snapshot()->count(CLASSID_TARGET), 2u);
}

TEST_F(OpenFilesTest, AChangeWhoseFilesGoWhileItIsMadeIsRefused) {
    const Failure failure = failureOf([&] {
        change([&](Change& change) {
            change.create(Target{"iqn.2026-01.com.example:t2", {}});
            fs::rename(state(), aside());
        });
    });
    EXPECT_EQ(failure.code, ErrorCode::StateGone);
    fs::rename(aside(), state());
    EXPECT_EQ(now()->count(CLASSID_TARGET), 1u);
}

TEST_F(OpenFilesTest, AFileOfAnEarlierProgramMayComeAndGo) {
    const fs::path file = state() / "array.version";
    for (int i = 0; i < 2; ++i) {
        std::ofstream(file) << "12345678";
        addTarget("made" + std::to_string(i));
        fs::resize_file(file, 0);
        addTarget("truncated" + std::to_string(i));
        fs::remove(file);
        addTarget("removed" + std::to_string(i));
    }
    EXPECT_EQ(Array::open(state())->snapshot()->count(CLASSID_TARGET), 7u);
}

} // namespace
} // namespace array
