#include "server/auth/Users.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/server/TemporaryDirectory.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace smisd::test {
namespace {

TEST(PasswordHash, FitsItsPasswordOnly) {
    const std::string hash = hashPassword("correct horse");
    EXPECT_TRUE(verifyPassword(hash, "correct horse"));
    EXPECT_FALSE(verifyPassword(hash, "correct horsf"));
    EXPECT_FALSE(verifyPassword(hash, ""));
    EXPECT_FALSE(verifyPassword(hash, std::string("correct horse\0", 14)));
}

TEST(PasswordHash, IsSaltedAndMemoryHard) {
    const std::string hash = hashPassword("x");
    EXPECT_NE(hash, hashPassword("x"));
    EXPECT_TRUE(hash.starts_with("$argon2id$v=19$m=65536,")) << hash;
    EXPECT_TRUE(isPasswordHash(hash));
}

TEST(PasswordHash, OtherTextIsNone) {
    for (const char* text : {"", "x", "secret", "$1$salt$hash", "$argon2id$"}) {
        EXPECT_FALSE(isPasswordHash(text)) << text;
        EXPECT_FALSE(verifyPassword(text, text)) << text;
    }
    EXPECT_FALSE(isPasswordHash(std::string(1000, 'x')));
}

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
    const std::string line = usersFileLine("alice", Role::administrator, "secret");
};

TEST_F(UsersFile, NamesEachUserOnALine) {
    write("# who may log in\n\n" + line + "\n" +
          usersFileLine("bob b\xC3\xB6", Role::reader, "other"));
    const Users users = readUsersFile(file);
    ASSERT_EQ(users.size(), 2U);
    EXPECT_TRUE(verifyPassword(users.at("alice").hash, "secret"));
    EXPECT_EQ(users.at("alice").role, Role::administrator);
    EXPECT_TRUE(verifyPassword(users.at("bob b\xC3\xB6").hash, "other"));
    EXPECT_EQ(users.at("bob b\xC3\xB6").role, Role::reader);
}

TEST_F(UsersFile, LineWithoutRoleIsAnAdministrators) {
    write("carol:" + hashPassword("x"));
    EXPECT_EQ(readUsersFile(file).at("carol").role, Role::administrator);
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
    for (const char* bad : {"alice", "alice:", "alice:secret", ":x", "alice:$1$x",
                            "alice:reader:", "alice:reader", "alice:reader:secret"}) {
        write(line + "\n" + bad + "\n");
        EXPECT_EQ(error(), "users file " + file.string() +
                               ": line 2 is not of the form name:role:hash; make one with smisd "
                               "hash-password");
    }
}

TEST_F(UsersFile, KnowsTwoRoles) {
    for (const char* role : {"", "Reader", "admin", "reader:reader"}) {
        write(std::string("carol:") + role + ":" + hashPassword("x"));
        EXPECT_THAT(error(), HasSubstr("line 1 is not of the form")) << role;
    }
}

TEST_F(UsersFile, NamesAUserOnce) {
    write(line + "\n" + line);
    EXPECT_THAT(error(), HasSubstr("line 2 repeats the user alice"));
}

TEST(UsersFileLine, RefusesNamesThatSpoilTheFile) {
    for (const char* name : {"", "a:b", "a\nb", "a\x7F", "a\xFF"}) {
        EXPECT_THROW(usersFileLine(name, Role::reader, "x"), std::runtime_error) << name;
    }
}

} // namespace
} // namespace smisd::test
