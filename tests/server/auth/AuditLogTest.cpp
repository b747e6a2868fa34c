#include "server/auth/AuditLog.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/server/TemporaryDirectory.h"

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace smisd::test {
namespace {

class AuditFile : public testing::Test {
protected:
    std::vector<std::string> lines() const {
        std::vector<std::string> result;
        std::ifstream in(file);
        for (std::string line; std::getline(in, line);) {
            result.push_back(line);
        }
        return result;
    }

    TemporaryDirectory directory;
    const fs::path file = directory.path / "audit.jsonl";
};

TEST_F(AuditFile, HasALineOfJsonForEachRecord) {
    AuditLog audit(file);
    audit.write(
        {"change", "alice", "192.0.2.7", "InvokeMethod", "ExposePaths", "root:C", "success", "0"});
    audit.write({"login", "", "192.0.2.8", "", "", "", "wrong", ""});
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_THAT(lines()[0],
                MatchesRegex(R"(\{"time":"20..-..-..T..:..:..\....Z","audit":"change",)"
                             R"("user":"alice","address":"192.0.2.7","operation":"InvokeMethod",)"
                             R"("method":"ExposePaths","object":"root:C","outcome":"success",)"
                             R"("returned":"0"\})"));
    EXPECT_EQ(nlohmann::json::parse(lines()[1]).size(), 4U);
}

TEST_F(AuditFile, IsPrivateAndContinued) {
    AuditLog(file).write({"change", "a", "", "", "", "", "", ""});
    AuditLog(file).write({"change", "b", "", "", "", "", "", ""});
    EXPECT_EQ(lines().size(), 2U);
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AuditFile, TakesAnyTextWithinALine) {
    AuditLog audit(file);
    const std::string nasty = "x\"\n\r{}%v\x01\xFF" + std::string(1'000'000, 'y');
    audit.write({"change", nasty, "", "", "", nasty, "", ""});
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_LT(lines()[0].size(), 5000U);
    const auto parsed = nlohmann::json::parse(lines()[0]);
    EXPECT_THAT(parsed["user"].get<std::string>(), testing::StartsWith("x\"\n\r{}%v\x01"));
}

TEST_F(AuditFile, ThatCannotBeWrittenIsNamed) {
    try {
        AuditLog(directory.path / "none" / "audit");
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr((directory.path / "none" / "audit").string()));
        EXPECT_THAT(error.what(), HasSubstr("--audit"));
    }
}

} // namespace
} // namespace smisd::test
