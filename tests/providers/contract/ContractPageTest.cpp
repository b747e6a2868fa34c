// docs/contract.md and the code agree on what is wanted.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const fs::path root = SOURCE_ROOT;

std::string contentOf(const fs::path& file) {
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

// "Line numbers of events", for the line "### Line numbers of events".
std::vector<std::string> headings() {
    std::vector<std::string> found;
    std::istringstream page(contentOf(root / "docs/contract.md"));
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("### ")) {
            found.push_back(line.substr(4));
        }
    }
    return found;
}

// A source in one line, without the marks of comments.
std::string joined(const fs::path& file) {
    std::string text;
    std::istringstream lines(contentOf(file));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find_first_not_of(" /");
        text += (begin == std::string::npos ? "" : line.substr(begin)) + ' ';
    }
    return text;
}

// What the sources say after "docs/contract.md, ".
std::vector<std::string> references() {
    const std::string mark = "docs/contract.md, ";
    std::vector<std::string> found;
    for (const char* folder : {"engine", "providers", "server"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            const std::string text = entry.is_regular_file() ? joined(entry.path()) : "";
            for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
                at += mark.size();
                found.push_back(text.substr(at, 60));
            }
        }
    }
    return found;
}

TEST(ContractPage, IsReferredToByItsHeadings) {
    const std::vector<std::string> known = headings();
    const std::vector<std::string> all = references();
    EXPECT_FALSE(all.empty());
    for (const std::string& reference : all) {
        EXPECT_TRUE(std::ranges::any_of(known, [&](const std::string& heading) {
            return reference.starts_with(heading);
        })) << reference;
    }
}

TEST(ContractPage, HasNoHeadingThatNoCodeRefersTo) {
    const std::vector<std::string> all = references();
    EXPECT_FALSE(headings().empty());
    for (const std::string& heading : headings()) {
        EXPECT_THAT(all, testing::Contains(testing::StartsWith(heading)));
    }
}

} // namespace
