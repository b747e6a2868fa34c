// The examples of the documents do what the documents say.

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Example {
    std::string command;
    std::string output;
};

// The commands of a document's console blocks, each after "$ ", with the output that follows it.
std::vector<Example> examplesOf(const std::filesystem::path& document) {
    std::vector<Example> examples;
    std::ifstream text(document);
    bool inBlock = false;
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("```")) {
            inBlock = line == "```console";
        } else if (inBlock && line.starts_with("$ ")) {
            examples.push_back({line.substr(2), ""});
        } else if (inBlock) {
            examples.back().output += line + "\n";
        }
    }
    return examples;
}

std::string outputOf(const std::string& command) {
    FILE* pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
    std::string out;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        out.push_back(static_cast<char>(c));
    }
    pclose(pipe);
    return out;
}

class Document : public testing::TestWithParam<const char*> {};

TEST_P(Document, EachExampleGivesTheOutputThatIsShown) {
    const std::filesystem::path root = SOURCE_ROOT;
    std::string directory = testing::TempDir() + "document.XXXXXX";
    ASSERT_NE(mkdtemp(directory.data()), nullptr);
    setenv("DRAV_STATE_DIR", (directory + "/state").c_str(), 1);
    setenv("PATH", (std::string(PROGRAM_DIR ":") + getenv("PATH")).c_str(), 1);
    std::filesystem::current_path(directory);
    std::filesystem::create_directory_symlink(root / "docs", "docs");
    const auto examples = examplesOf(root / "docs" / GetParam());
    EXPECT_FALSE(examples.empty());
    for (const Example& example : examples) {
        EXPECT_EQ(outputOf(example.command), example.output) << example.command;
    }
    std::filesystem::current_path("/");
    std::filesystem::remove_all(directory);
    unsetenv("DRAV_STATE_DIR");
}

INSTANTIATE_TEST_SUITE_P(Docs, Document, testing::Values("operation.md", "description.md"),
                         [](const auto& test) {
                             const std::string name = test.param;
                             return name.substr(0, name.find('.'));
                         });

} // namespace
