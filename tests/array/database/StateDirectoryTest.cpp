#include "array/database/StateDirectory.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <SQLiteCpp/Database.h>

#include "tests/array/ArrayFixture.h"
#include "tests/array/support/OlderFormat.h"

namespace array {
namespace {

class StateDirectoryTest : public ArrayFixture {
protected:
    fs::path database() const { return databaseIn(state()); }

    void closeArray() { _array.reset(); }
    static std::string contentOf(const fs::path& file) {
        std::ostringstream content;
        content << std::ifstream(file, std::ios::binary).rdbuf();
        return content.str();
    }
    void replaceDatabase(const std::string& content) {
        closeArray();
        std::ofstream(database(), std::ios::binary | std::ios::trunc) << content;
    }
    // Expects that the array is refused so, whether it may be made or not, and left alone.
    void expectRefused(ErrorCode code, const std::string& message) {
        const std::string before = contentOf(database());
        expectFailure(code, message, [&] { Array::open(state()); });
        EXPECT_EQ(failureOf([&] { Array::openOrCreate(state()); }).code, code);
        EXPECT_EQ(contentOf(database()), before);
    }
    static mode_t modeOf(const fs::path& file) {
        struct stat status {};
        EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
        return status.st_mode & 07777;
    }
};

TEST(StateDirectory, IsTheOneGivenOrNamedOrTheDefault) {
    setenv("DRAV_STATE_DIR", "/somewhere/else", 1);
    EXPECT_EQ(stateDirectory("/given"), "/given");
    EXPECT_EQ(stateDirectory(), "/somewhere/else");
    setenv("DRAV_STATE_DIR", "", 1);
    EXPECT_EQ(stateDirectory(), "/var/lib/smisd");
    unsetenv("DRAV_STATE_DIR");
    EXPECT_EQ(stateDirectory(), "/var/lib/smisd");
}

TEST_F(StateDirectoryTest, NobodyElseCanReadWhatIsMade) {
    addInitiator("host1", "weak");
    EXPECT_EQ(modeOf(state()), 0700u);
    for (const auto& file : fs::directory_iterator(state())) {
        EXPECT_EQ(modeOf(file.path()), 0600u) << file.path();
    }
    EXPECT_TRUE(fs::exists(eventsIn(state())));
}

TEST_F(StateDirectoryTest, AMissingDirectoryIsNotMadeByOpening) {
    const fs::path missing = _directory.path() / "missing";
    expectFailure(ErrorCode::StateMissing,
                  missing.string() +
                      ": there is no such state directory. Make an array with: "
                      "arrayctl --state " +
                      missing.string() + " import FILE",
                  [&] { Array::open(missing); });
    EXPECT_FALSE(fs::exists(missing));
    EXPECT_EQ(failureOf([&] { Array::openOrCreate(missing / "deep"); }).code,
              ErrorCode::StateUnreadable);
}

TEST_F(StateDirectoryTest, ADirectoryWithoutAnArrayIsRefusedByOpening) {
    const fs::path empty = _directory.path() / "empty";
    fs::create_directory(empty);
    fs::permissions(empty, fs::perms::owner_all);
    expectFailure(ErrorCode::StateMissing,
                  (empty / "array.db").string() +
                      ": there is no array in this state directory. "
                      "Make one with: arrayctl --state " +
                      empty.string() + " import FILE",
                  [&] { Array::open(empty); });
    EXPECT_TRUE(fs::is_empty(empty));
    EXPECT_NO_THROW(Array::openOrCreate(empty));
}

TEST_F(StateDirectoryTest, AFileIsNoStateDirectory) {
    const fs::path file = _directory.path() / "file";
    std::ofstream(file) << "x";
    expectFailure(ErrorCode::StateUnreadable, file.string() + ": this is no directory.",
                  [&] { Array::openOrCreate(file); });
}

TEST_F(StateDirectoryTest, ADirectoryThatIsOpenToOthersIsRefused) {
    closeArray();
    for (const fs::perms wide :
         {fs::perms::group_read, fs::perms::others_exec, fs::perms::group_write}) {
        fs::permissions(state(), fs::perms::owner_all | wide);
        EXPECT_EQ(failureOf([&] { Array::open(state()); }).code, ErrorCode::StateNotPrivate);
    }
    fs::permissions(state(), fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec);
    expectFailure(ErrorCode::StateNotPrivate,
                  state().string() +
                      ": the state directory has mode 0750 and holds secrets, so "
                      "nobody else may look into it. Close it with: chmod 700 " +
                      state().string(),
                  [&] { Array::openOrCreate(state()); });
}

TEST_F(StateDirectoryTest, ADirectoryOfAnotherUserIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give a directory away";
    }
    closeArray();
    ASSERT_EQ(chown(state().c_str(), 12345, 12345), 0);
    expectFailure(ErrorCode::StateNotPrivate,
                  state().string() +
                      ": the state directory belongs to user 12345, and this process "
                      "runs as user 0. Run it as the owner.",
                  [&] { Array::openOrCreate(state()); });
}

TEST_F(StateDirectoryTest, AnEmptyDatabaseIsDamagedAndNotMadeAnew) {
    replaceDatabase("");
    expectRefused(ErrorCode::StateDamaged,
                  database().string() + ": the file is empty. Put a backup in its place.");
}

TEST_F(StateDirectoryTest, ATextFileIsNoDatabase) {
    replaceDatabase(std::string(10000, 'x'));
    expectRefused(ErrorCode::StateDamaged,
                  database().string() + ": file is not a database. Put a backup in its place.");
}

TEST_F(StateDirectoryTest, ATruncatedDatabaseIsDamaged) {
    change([](Change& change) {
        for (int i = 0; i < 3000; ++i) {
            change.create(Volume{"0A" + std::to_string(1000000000 + i), "name", 0, 0});
        }
    });
    closeArray();
    const std::string whole = contentOf(database());
    for (const std::size_t size :
         {std::size_t{100}, std::size_t{4096}, whole.size() / 2, whole.size() - 4096}) {
        replaceDatabase(whole.substr(0, size));
        const Failure failure = failureOf([&] { Array::open(state()); });
        EXPECT_EQ(static_cast<int>(failure.code), static_cast<int>(ErrorCode::StateDamaged))
            << size;
        EXPECT_NE(failure.message.find("Put a backup in its place."), std::string::npos);
    }
}

TEST_F(StateDirectoryTest, ADatabaseOfAnotherProgramIsForeign) {
    closeArray();
    fs::remove(database());
    SQLite::Database(database().string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
        .exec("CREATE TABLE t (x)");
    expectRefused(ErrorCode::StateForeign,
                  database().string() + ": this database was made by another program. Put the "
                                        "array's own file in its place.");
}

TEST_F(StateDirectoryTest, ANewerFormatIsRefusedAndBothAreNamed) {
    closeArray();
    SQLite::Database(database().string(), SQLite::OPEN_READWRITE).exec("PRAGMA user_version = 7");
    expectRefused(ErrorCode::StateNewer,
                  database().string() +
                      ": the array is kept in format 7, and this program reads "
                      "format 2. Use the program that made it, or put a backup in "
                      "its place.");
}

TEST_F(StateDirectoryTest, AnOlderFormatIsBroughtToThisOne) {
    const Id unit = addUnit(addTarget(), 7, addVolume());
    const std::uint64_t version = now()->version();
    closeArray();
    makeOlder(database());
    std::vector<std::thread> openers; // as several processes would
    for (int i = 0; i < 4; ++i) {
        openers.emplace_back(
            [&] { EXPECT_EQ(Array::open(state())->snapshot()->logicalUnit(unit)->lun, 7u); });
    }
    for (std::thread& opener : openers) {
        opener.join();
    }
    EXPECT_EQ(formatOf(database()), 2);
    reopen();
    EXPECT_EQ(now()->version(), version);
    EXPECT_TRUE(array().check().empty());
    EXPECT_ANY_THROW(SQLite::Database(database().string(), SQLite::OPEN_READWRITE)
                         .exec("INSERT INTO unit SELECT id + 1, target, lun, access, volume, "
                               "volume_name FROM unit"));
}

TEST_F(StateDirectoryTest, AnOlderFormatThatContradictsThisOneStaysAsItIs) {
    const Id target = addTarget();
    const Id volume = addVolume();
    addUnit(target, 7, volume);
    addUnit(target, 8, volume);
    closeArray();
    makeOlder(database());
    SQLite::Database(database().string(), SQLite::OPEN_READWRITE).exec("UPDATE unit SET lun = 7");
    const Failure failure = failureOf([&] { Array::open(state()); });
    EXPECT_EQ(failure.code, ErrorCode::StateDamaged);
    EXPECT_NE(failure.message.find("unit.target, unit.lun"), std::string::npos) << failure.message;
    EXPECT_EQ(formatOf(database()), 1);
}

TEST_F(StateDirectoryTest, ContentThatContradictsItselfIsDamaged) {
    addTarget();
    closeArray();
    const auto corrupt = [&](const char* sql) {
        SQLite::Database(database().string(), SQLite::OPEN_READWRITE).exec(sql);
    };
    corrupt("UPDATE target SET id = 5");
    expectFailure(ErrorCode::StateDamaged,
                  "array.db, table target: the id Ovrin:00000005 is of another class. Put a backup "
                  "in its place.",
                  [&] { Array::open(state()); });
    corrupt("UPDATE target SET id = 0x0E000001; UPDATE session_settings SET max_connections = -1");
    expectFailure(ErrorCode::StateDamaged,
                  "array.db, table session_settings, column max_connections: -1 is out of range. "
                  "Put a backup in its place.",
                  [&] { Array::open(state()); });
    corrupt("UPDATE session_settings SET max_connections = 1; DELETE FROM array");
    expectFailure(ErrorCode::StateDamaged,
                  "array.db, table array: the row of the array is missing. Put a backup in its "
                  "place.",
                  [&] { Array::open(state()); });
}

TEST_F(StateDirectoryTest, OneArrayIsMadeByManyWhoMakeItAtOnce) {
    const fs::path directory = _directory.path() / "shared";
    std::vector<std::thread> makers;
    for (int i = 0; i < 4; ++i) {
        makers.emplace_back([&directory, i] {
            Array::openOrCreate(directory)->change([i](Change& change) {
                change.create(Volume{"0" + std::to_string(i), {}, 0, 0});
            });
        });
    }
    for (std::thread& maker : makers) {
        maker.join();
    }
    EXPECT_EQ(Array::open(directory)->snapshot()->count(Pegasus::CLASSID_VOLUME), 4u);
    for (const auto& file : fs::directory_iterator(directory)) {
        EXPECT_EQ(file.path().string().find(".new-"), std::string::npos) << file.path();
    }
}

} // namespace
} // namespace array
