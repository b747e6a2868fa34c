// A request of twice the size costs twice as much: whatever it names is looked up, not searched
// for. Instructions are counted, which do not depend on what else the machine does.

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/server/TemporaryDirectory.h"

namespace smisd::test {
namespace {

// What one call cost, by the file that valgrind left of it.
std::uint64_t instructionsIn(const std::filesystem::path& file) {
    const std::string label = "totals: ";
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(label)) {
            return std::stoull(line.substr(label.size()));
        }
    }
    return 0;
}

// Of the warming call, of one of the single size and one of the double size.
std::vector<std::uint64_t> instructionsOf(const std::string& kind) {
    const TemporaryDirectory directory;
    const std::filesystem::path counts = directory.path / "counts";
    const std::string command =
        "valgrind --tool=callgrind --toggle-collect=answerRequest --dump-after=answerRequest "
        "--callgrind-out-file=" +
        counts.string() + " " REQUEST_COST " " MODULE " " MOF " " + kind + " >" +
        (directory.path / "log").string() + " 2>&1";
    if (std::system(command.c_str()) != 0) {
        ADD_FAILURE() << std::ifstream(directory.path / "log").rdbuf();
        return {};
    }
    std::vector<std::uint64_t> result;
    for (const char* call : {".1", ".2", ".3"}) {
        result.push_back(instructionsIn(counts.string() + call));
    }
    return result;
}

class RequestCost : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (std::string(SANITIZED) != "") {
            GTEST_SKIP() << "not counted: valgrind does not run beside a sanitizer";
        }
        if (std::system("valgrind --version >/dev/null 2>&1") != 0) {
            GTEST_SKIP() << "not counted: there is no valgrind";
        }
    }
};

TEST_P(RequestCost, GrowsAsTheRequestDoes) {
    const std::vector<std::uint64_t> counted = instructionsOf(GetParam());
    ASSERT_EQ(counted.size(), 3U);
    EXPECT_GT(counted[1], 100000U) << "is anything counted?";
    const double ratio = static_cast<double>(counted[2]) / static_cast<double>(counted[1]);
    RecordProperty("instructions", std::to_string(counted[1]));
    EXPECT_LE(ratio, 2.2) << counted[1] << " instructions, then " << counted[2];
    EXPECT_GE(ratio, 1.2) << "does the request grow?";
}

INSTANTIATE_TEST_SUITE_P(Of, RequestCost,
                         testing::Values("PropertiesOfAnInstanceAskedFor",
                                         "PropertiesOfAllInstancesAskedFor",
                                         "PropertiesOfAssociatorsAskedFor",
                                         "PropertiesOfAClassAskedFor", "Instances", "Properties",
                                         "Qualifiers", "Keys", "ReferenceKeys", "Attributes",
                                         "Namespaces", "MethodParameters"),
                         [](const auto& kind) { return std::string(kind.param); });

} // namespace
} // namespace smisd::test
