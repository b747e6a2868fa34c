#include "server/auth/UsersFile.h"

#include "server/auth/PasswordHash.h"
#include "tests/server/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace smisd::test {
namespace {

class UsersFile : public testing::Test {
protected:
    void write(const std::string& text,
               fs::perms mode = fs::perms::owner_read | fs::perms::owner_write) {
        std::ofstream(file) << text;
        fs::permissions(file, mode);
    }

    std::string error() const {
        try {
            readUsersFile(file);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    }

    TemporaryDirectory directory;
    const fs::path file = directory.path / "users";
    const std::string line = usersFileLine("alice", "secret");
};

TEST_F(UsersFile, NamesEachUserOnALine) {
    write("# who may log in\n\n" + line + "\n" + usersFileLine("bob b\xC3\xB6", "other"));
    const Users users = readUsersFile(file);
    ASSERT_EQ(users.size(), 2U);
    EXPECT_TRUE(verifyPassword(users.at("alice"), "secret"));
    EXPECT_TRUE(verifyPassword(users.at("bob b\xC3\xB6"), "other"));
}

TEST_F(UsersFile, MustBePrivate) {
    for (const fs::perms shared : {fs::perms::group_read, fs::perms::others_read,
                                   fs::perms::group_write, fs::perms::others_write}) {
        write(line, fs::perms::owner_read | shared);
        EXPECT_EQ(error(), "users file " + file.string() +
                               ": others than its owner may read or write it; run chmod 600 on it");
    }
}

TEST_F(UsersFile, MustBeThere) {
    EXPECT_THAT(error(), HasSubstr(file.string() + ": "));
}

TEST_F(UsersFile, BadLineIsNamedWithoutItsContent) {
    for (const char* bad : {"alice", "alice:", "alice:secret", ":x", "alice:$1$x"}) {
        write(line + "\n" + bad + "\n");
        EXPECT_EQ(error(), "users file " + file.string() +
                               ": line 2 is not of the form name:hash; make one with smisd "
                               "hash-password");
    }
}

TEST_F(UsersFile, NamesAUserOnce) {
    write(line + "\n" + line);
    EXPECT_THAT(error(), HasSubstr("line 2 repeats the user alice"));
}

TEST(UsersFileLine, RefusesNamesThatSpoilTheFile) {
    for (const char* name : {"", "a:b", "a\nb", "a\x7F", "a\xFF"}) {
        EXPECT_THROW(usersFileLine(name, "x"), std::runtime_error) << name;
    }
}

} // namespace
} // namespace smisd::test
