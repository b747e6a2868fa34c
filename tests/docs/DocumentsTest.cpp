// What the documents say of files is the case.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

const fs::path root = SOURCE_ROOT;

Lines linesOf(const fs::path& file) {
    std::ifstream text(root / file);
    Lines lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<fs::path> documents() {
    std::vector<fs::path> found = {"README.md", "CONTRIBUTING.md"};
    for (const auto& entry : fs::recursive_directory_iterator(root / "docs")) {
        if (entry.path().extension() == ".md") {
            found.push_back(fs::relative(entry.path(), root));
        }
    }
    return found;
}

// All matches of the pattern's first group.
std::set<std::string> allIn(const fs::path& document, const std::regex& pattern) {
    std::set<std::string> found;
    for (const std::string& line : linesOf(document)) {
        for (std::sregex_iterator match(line.begin(), line.end(), pattern), end; match != end;
             ++match) {
            found.insert((*match)[1]);
        }
    }
    return found;
}

bool standsIn(const Lines& whole, const Lines& part) {
    return std::search(whole.begin(), whole.end(), part.begin(), part.end()) != whole.end();
}

// A block of code that stands below the line "`FILE`:".
struct Quote {
    std::string file;
    Lines lines;
};

std::vector<Quote> quotesIn(const fs::path& document) {
    const std::regex source("`([^`]+)`:$");
    std::vector<Quote> quotes;
    std::string file;
    bool inBlock = false;
    for (const std::string& line : linesOf(document)) {
        std::smatch match;
        if (line == "```cpp") {
            inBlock = true;
            quotes.push_back({file, {}});
        } else if (line == "```") {
            inBlock = false;
        } else if (inBlock) {
            quotes.back().lines.push_back(line);
        } else if (std::regex_search(line, match, source)) {
            file = match[1];
        } else if (!line.empty()) {
            file.clear();
        }
    }
    return quotes;
}

TEST(Documents, QuoteLinesThatStandInTheFileThatTheyName) {
    std::size_t count = 0;
    for (const fs::path& document : documents()) {
        for (const Quote& quote : quotesIn(document)) {
            EXPECT_TRUE(standsIn(linesOf(quote.file), quote.lines))
                << document << " quotes of \"" << quote.file
                << "\" what is not there, at: " << quote.lines.front();
            ++count;
        }
    }
    EXPECT_GT(count, 0U);
}

TEST(Documents, NameFilesAndFoldersThatExist) {
    const std::regex path("`((?:array|bench|cli|cmake|commandline|docs|engine|fuzz|mof|packaging|"
                          "pegasus|providers|server|tests)/[A-Za-z0-9_./-]*)");
    std::size_t count = 0;
    for (const fs::path& document : documents()) {
        for (const std::string& name : allIn(document, path)) {
            EXPECT_TRUE(fs::exists(root / name)) << document << " names " << name;
            ++count;
        }
    }
    EXPECT_GT(count, 0U);
}

TEST(Documents, LinkToFilesThatExist) {
    const std::regex link(R"(\]\(([^)#:]+)[^):]*\))");
    std::size_t count = 0;
    for (const fs::path& document : documents()) {
        for (const std::string& name : allIn(document, link)) {
            EXPECT_TRUE(fs::exists(root / document.parent_path() / name))
                << document << " links to " << name;
            ++count;
        }
    }
    EXPECT_GT(count, 0U);
}

// All words of the sources, and the names of their files.
std::set<std::string> wordsOfTheCode() {
    std::set<std::string> words;
    for (const char* part : {"array", "cli", "engine", "mof", "pegasus", "providers", "server"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / part)) {
            words.insert(entry.path().stem());
            std::string word;
            for (const std::string& line : linesOf(entry.path())) {
                for (const char c : line + ' ') {
                    if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_') {
                        word += c;
                    } else if (!word.empty()) {
                        words.insert(std::exchange(word, {}));
                    }
                }
            }
        }
    }
    return words;
}

TEST(Documents, NameTypesThatTheCodeHas) {
    const std::set<std::string> words = wordsOfTheCode();
    const std::set<std::string> named =
        allIn("docs/architecture.md", std::regex("`([A-Z][a-z][A-Za-z0-9]+)`"));
    EXPECT_FALSE(named.empty());
    for (const std::string& name : named) {
        EXPECT_TRUE(words.contains(name)) << name;
    }
}

// The line "array/model  comment" of the list asks for a row "| `array/model/` |" of the table.
TEST(Documents, DescribeEachFolderOfTheIncludeOrder) {
    const Lines lines = linesOf("docs/architecture.md");
    auto line = std::find(lines.begin(), lines.end(), "```layers");
    ASSERT_NE(line, lines.end());
    const std::set<std::string> described =
        allIn("docs/architecture.md", std::regex(R"(^\| \**`([^`]+/)`\** \|)"));
    for (++line; *line != "```"; ++line) {
        const std::string folder = line->substr(0, line->find("  ")) + "/";
        if (fs::is_directory(root / folder)) {
            EXPECT_THAT(described, testing::Contains(testing::StartsWith(folder)));
        }
    }
}

} // namespace
