#include "server/main/BesideProgram.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace smisd {
namespace {

fs::path directory() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

TEST(BesideProgram, IsTheFirstThatExists) {
    const fs::path program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(besideProgram({"none", fs::path("..") / directory().filename() / program.filename()}),
              program);
}

TEST(BesideProgram, IsTheFirstOneWhenNoneExists) {
    EXPECT_EQ(besideProgram({"../none/of", "none"}), directory().parent_path() / "none/of");
}

} // namespace
} // namespace smisd
