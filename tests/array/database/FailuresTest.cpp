#include "array/database/Failures.h"

#include <cerrno>

#include "array/database/StateDirectory.h"
#include "tests/array/ArrayFixture.h"
#include "tests/array/support/SmallFileSystem.h"

namespace array {
namespace {

struct FileFailure {
    const char* name;
    int error;
    ErrorCode code;
    const char* message; // behind the path
};

class FileFailureTest : public testing::TestWithParam<FileFailure> {};

TEST_P(FileFailureTest, IsOfItsKindAndSaysWhatToDo) {
    const auto& [name, error, code, message] = GetParam();
    expectFailure(code, std::string("/srv/array.db: ") + message,
                  [error = error] { failFile("/srv/array.db", error); });
    expectFailure(code, std::string("/srv/array.db: it cannot be made: ") + message,
                  [error = error] { failFile("/srv/array.db", error, "it cannot be made"); });
}

INSTANTIATE_TEST_SUITE_P(
    Errors, FileFailureTest,
    testing::Values(FileFailure{"NotAllowed", EACCES, ErrorCode::StateUnreadable,
                                "Permission denied. Look at its owner and mode."},
                    FileFailure{"There", EEXIST, ErrorCode::StateExists, "File exists."},
                    FileFailure{
                        "Full", ENOSPC, ErrorCode::StateFull,
                        "No space left on device. Make room on the file system and try again."},
                    FileFailure{"OverQuota", EDQUOT, ErrorCode::StateFull,
                                "Disk quota exceeded. Make room on the file system and try again."},
                    FileFailure{"ReadOnly", EROFS, ErrorCode::StateUnreadable,
                                "Read-only file system. An array needs one that can be written."},
                    FileFailure{"Broken", EIO, ErrorCode::StateFailed,
                                "Input/output error. Look at the disk and the system's log."},
                    FileFailure{"Other", ELOOP, ErrorCode::StateUnreadable,
                                "Too many levels of symbolic links."}),
    [](const auto& row) { return row.param.name; });

using Pegasus::CLASSID_VOLUME;

class FileSystemTest : public testing::Test {
protected:
    void SetUp() override {
        if (!_fileSystem.isThere()) {
            GTEST_SKIP() << "only root can have a file system of its own";
        }
    }

    fs::path state() const { return _fileSystem.path() / "state"; }

    static void addVolumes(Array& array, int count) {
        array.change([&](Change& change) {
            const std::size_t there = change.snapshot().count(CLASSID_VOLUME);
            for (int i = 0; i < count; ++i) {
                change.create(Volume{std::to_string(10000000 + there) + std::to_string(1000 + i),
                                     std::string(200, 'n'), 0, 0});
            }
        });
    }

    SmallFileSystem _fileSystem{1024};
};

TEST_F(FileSystemTest, AFullOneLeavesTheLastGoodState) {
    std::ofstream(_fileSystem.path() / "something else") << std::string(400000, 'x');
    const auto array = Array::openOrCreate(state());
    std::size_t made = 0;
    Failure failure;
    while ((failure = failureOf([&] { addVolumes(*array, 100); })).code == ErrorCode{}) {
        made += 100;
        ASSERT_LT(made, 100000u);
    }
    EXPECT_EQ(failure.code, ErrorCode::StateFull);
    EXPECT_EQ(failure.message, databaseIn(state()).string() +
                                   ": database or disk is full. Nothing was changed. Make room on "
                                   "the file system and try again.");
    EXPECT_GT(made, 0u);
    _fileSystem.fill();
    EXPECT_EQ(array->snapshot()->count(CLASSID_VOLUME), made);
    EXPECT_EQ(Array::open(state())->snapshot()->count(CLASSID_VOLUME), made);
    EXPECT_TRUE(array->check().empty());

    fs::remove(_fileSystem.path() / "something else");
    addVolumes(*array, 1);
    EXPECT_EQ(Array::open(state())->snapshot()->count(CLASSID_VOLUME), made + 1);
}

TEST_F(FileSystemTest, AFullOneIsNoPlaceForANewArray) {
    fs::create_directory(state());
    fs::permissions(state(), fs::perms::owner_all);
    _fileSystem.fill();
    EXPECT_EQ(failureOf([&] { Array::openOrCreate(state()); }).code, ErrorCode::StateFull);
    EXPECT_TRUE(fs::is_empty(state()));
    _fileSystem.empty();
    EXPECT_NO_THROW(Array::openOrCreate(state()));
}

TEST_F(FileSystemTest, AFullOneIsNoPlaceForANewStateDirectory) {
    _fileSystem.fillWithFiles();
    expectFailure(ErrorCode::StateFull,
                  state().string() + ": the state directory cannot be made: No space left on "
                                     "device. Make room on the file system and try again.",
                  [&] { Array::openOrCreate(state()); });
    _fileSystem.empty();
    EXPECT_NO_THROW(Array::openOrCreate(state()));
}

TEST_F(FileSystemTest, OnAFullOneAnArrayThatNobodyUsesIsRefusedWithAdvice) {
    addVolumes(*Array::openOrCreate(state()), 10);
    _fileSystem.fill();
    const Failure failure = failureOf([&] { Array::open(state()); });
    EXPECT_EQ(failure.code, ErrorCode::StateFull);
    EXPECT_NE(failure.message.find("Make room on the file system"), std::string::npos)
        << failure.message;
    _fileSystem.empty();
    EXPECT_EQ(Array::open(state())->snapshot()->count(CLASSID_VOLUME), 10u);
}

TEST_F(FileSystemTest, AReadOnlyOneIsRefusedWithAdvice) {
    addVolumes(*Array::openOrCreate(state()), 10);
    _fileSystem.makeReadOnly();
    for (const auto& open : {Array::open, Array::openOrCreate}) {
        const Failure failure = failureOf([&] { open(state(), nullptr); });
        EXPECT_EQ(failure.code, ErrorCode::StateUnreadable);
        EXPECT_NE(failure.message.find("Read-only file system"), std::string::npos)
            << failure.message;
    }
    const Failure failure =
        failureOf([&] { Array::openOrCreate(_fileSystem.path() / "new", nullptr); });
    EXPECT_EQ(failure.code, ErrorCode::StateUnreadable);
    EXPECT_NE(failure.message.find("Read-only file system"), std::string::npos);
}

} // namespace
} // namespace array
