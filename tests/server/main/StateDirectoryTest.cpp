// The state directory that the server hands to the array.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <gmock/gmock.h>

#include "server/main/Serve.h"
#include "tests/server/TemporaryDirectory.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace smisd::test {
namespace {

class StateDirectory : public testing::Test {
protected:
    ~StateDirectory() override { unsetenv("DRAV_STATE_DIR"); }

    std::string error(const fs::path& path) const {
        try {
            passStateDirectory(path);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    }

    TemporaryDirectory temporary;
    const fs::path directory = temporary.path / "state";
};

TEST_F(StateDirectory, IsMadeForItsOwnerOnlyAndPassedOn) {
    passStateDirectory(directory);
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all);
    EXPECT_EQ(std::getenv("DRAV_STATE_DIR"), directory);
}

TEST_F(StateDirectory, IsUsedAsItIs) {
    fs::create_directory(directory);
    fs::permissions(directory, fs::perms::owner_all | fs::perms::group_read);
    passStateDirectory(directory);
    EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all | fs::perms::group_read);
}

TEST_F(StateDirectory, RelativePathIsMadeAbsolute) {
    const fs::path before = fs::current_path();
    fs::current_path(temporary.path);
    passStateDirectory("state");
    fs::current_path(before);
    EXPECT_EQ(std::getenv("DRAV_STATE_DIR"), directory);
}

TEST_F(StateDirectory, ThatCannotBeUsedIsNamed) {
    std::ofstream(directory) << "a file";
    EXPECT_EQ(error(directory), "cannot use the state directory " + directory.string() +
                                    ": Not a directory; name one that this user can read and write "
                                    "with --state");
    EXPECT_THAT(error(directory / "below"), HasSubstr(": Not a directory; "));
    EXPECT_THAT(error(directory.parent_path() / "nonexistent" / "below"),
                HasSubstr(": No such file or directory; "));
    EXPECT_EQ(std::getenv("DRAV_STATE_DIR"), nullptr);
}

} // namespace
} // namespace smisd::test
