// State directories and descriptions that cannot be used: each has an exit status of its own, and
// nothing is changed.

#include <fstream>
#include <unistd.h>

#include "tests/array/support/SmallFileSystem.h"
#include "tests/cli/Cli.h"

using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

class BadState : public Cli {
protected:
    // Reads, changes, looks for damage and imports: all fail so, and leave the state as it was.
    void expectAllFail(const std::string& what) {
        const std::string before = contentOf(state / "array.db");
        for (const std::vector<std::string>& arguments :
             std::vector<std::vector<std::string>>{{"show"},
                                                   {"volume", "create", "6001", "--size", "1"},
                                                   {"check"},
                                                   {"backup", (directory / "copy.db").string()},
                                                   {"import", "-"}}) {
            EXPECT_THAT(stateFailureOf(arguments, "{}"),
                        testing::AllOf(HasSubstr(state.string()), HasSubstr(what)));
        }
        EXPECT_EQ(contentOf(state / "array.db"), before);
        EXPECT_FALSE(fs::exists(directory / "copy.db"));
    }

    static std::string contentOf(const fs::path& file) {
        std::ostringstream content;
        content << std::ifstream(file, std::ios::binary).rdbuf();
        return content.str();
    }
};

TEST_F(BadState, OfWiderMode) {
    importSmallArray();
    fs::permissions(state, fs::perms::group_read, fs::perm_options::add);
    expectAllFail("chmod 700");
}

TEST_F(BadState, OfAnotherUser) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give a directory away";
    }
    importSmallArray();
    ASSERT_EQ(chown(state.c_str(), 12345, 12345), 0);
    expectAllFail("Run it as the owner.");
}

TEST_F(BadState, WithATruncatedDatabase) {
    importSmallArray();
    fs::resize_file(state / "array.db", 5000);
    expectAllFail("Put a backup in its place.");
}

TEST_F(BadState, WithAForeignFile) {
    importSmallArray();
    fs::remove(state / "array.db-wal");
    std::ofstream(state / "array.db") << std::string(10000, 'x');
    expectAllFail("Put a backup in its place.");
}

TEST_F(BadState, OnAReadOnlyFileSystem) {
    array::SmallFileSystem fileSystem(2048);
    if (!fileSystem.isThere()) {
        GTEST_SKIP() << "only root can have a file system of its own";
    }
    state = fileSystem.path() / "state";
    importSmallArray();
    fileSystem.makeReadOnly();
    expectAllFail("Read-only file system");
}

TEST_F(BadState, OnAFullFileSystem) {
    array::SmallFileSystem fileSystem(512);
    if (!fileSystem.isThere()) {
        GTEST_SKIP() << "only root can have a file system of its own";
    }
    state = fileSystem.path() / "state";
    std::string volumes;
    for (int i = 0; i < 20000; ++i) {
        volumes += (i == 0 ? "" : ",") + std::string(R"({"size":1,"name":")") +
                   std::to_string(10000000 + i) + "\"}";
    }
    EXPECT_THAT(
        stateFailureOf({"import", "-"}, R"({"host":"h","system":"s","volumes":[)" + volumes + "]}"),
        HasSubstr("Make room on the file system"));
    EXPECT_TRUE(fs::is_empty(fileSystem.path()));
}

TEST_F(BadState, IsNotMadeByALongDescriptionWithAMistakeAtItsEnd) {
    std::string text = R"({"host":"h","system":"s","volumes":[)";
    for (int i = 0; i < 50000; ++i) {
        text += R"({"size":1,"name":")" + std::to_string(10000000 + i) + "\"},\n";
    }
    for (const auto& [end, mistake] : {std::pair("5]}", "/volumes/50000: "),
                                       {R"({"size":1,"name":"10000007"}]})", "/volumes/50000: "},
                                       {R"({"size":1)", "parse error at line 50001"}}) {
        EXPECT_THAT(mistakeOf({"import", "-"}, text + end), HasSubstr(mistake));
        EXPECT_TRUE(fs::is_empty(directory));
    }
}

} // namespace
