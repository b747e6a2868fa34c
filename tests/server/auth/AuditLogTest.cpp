#include "server/auth/AuditLog.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
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
    audit.write({"change", "alice", "192.0.2.7", "InvokeMethod", "ExposePaths", "root:C", "success",
                 "0", 17});
    audit.write({"login", "", "192.0.2.8", "", "", "", "wrong", ""});
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_THAT(lines()[0],
                MatchesRegex(R"(\{"time":"20..-..-..T..:..:..\....Z","audit":"change","change":17,)"
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

TEST_F(AuditFile, HasNoCharacterThatATerminalObeys) {
    AuditLog audit(file);
    const std::string nasty = "\x1B[2J\x7F\u009B\u202Ex\n\\u0041";
    audit.write({"change", "a", "", "", "", nasty, "", ""});
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_THAT(lines()[0], HasSubstr(R"("object":"\u001b[2J\u007F\u009B\u202Ex\n\\u0041")"));
    EXPECT_EQ(nlohmann::json::parse(lines()[0])["object"], nasty);
}

TEST_F(AuditFile, SumsRepeatsOfWhatClientsCanCauseWithoutEnd) {
    {
        AuditLog audit(file);
        for (int i = 0; i < 1000; ++i) {
            audit.writeSummed(
                {"refusal", "bob", "192.0.2.7", "GetInstance", "", std::to_string(i), "DENIED"});
            audit.writeSummed({"login", "", "2001:db8::" + std::to_string(i), "", "", "", "wrong"});
        }
        audit.write({"change", "bob"});
    }
    ASSERT_EQ(lines().size(), 5U);
    EXPECT_THAT(lines()[0], HasSubstr(R"("address":"192.0.2.7","operation":"GetInstance",)"
                                      R"("object":"0","outcome":"DENIED"})"));
    EXPECT_THAT(lines()[1], HasSubstr(R"("address":"2001:db8::0","outcome":"wrong"})"));
    EXPECT_THAT(lines()[2], HasSubstr(R"("audit":"change")"));
    EXPECT_THAT(lines()[3], HasSubstr(R"("address":"2001:db8::/64","outcome":"wrong",)"
                                      R"("repeated":999,"seconds":10})"));
    EXPECT_THAT(lines()[4],
                HasSubstr(R"("audit":"refusal","user":"bob","address":"192.0.2.7",)"
                          R"("operation":"GetInstance","outcome":"DENIED","repeated":999,)"));
}

TEST_F(AuditFile, KeepsOtherKindsApart) {
    AuditLog audit(file);
    const AuditRecord record{"refusal", "bob", "192.0.2.7", "GetInstance", "", "", "DENIED"};
    std::vector<AuditRecord> others(6, record);
    others[1].event = "login";
    others[2].user = "carol";
    others[3].address = "192.0.2.8";
    others[4].operation = "DeleteInstance";
    others[5].outcome = "wrong";
    for (const AuditRecord& other : others) {
        audit.writeSummed(other);
    }
    EXPECT_EQ(lines().size(), others.size());
}

TEST_F(AuditFile, StaysSmallWhateverAddressesAsk) {
    {
        AuditLog audit(file);
        for (int i = 0; i < 20000; ++i) {
            audit.writeSummed({"login", "",
                               "10.0." + std::to_string(i / 256) + "." + std::to_string(i % 256),
                               "", "", "", "wrong"});
        }
    }
    EXPECT_LT(lines().size(), 600U);
    EXPECT_THAT(lines().back(), HasSubstr(R"("audit":"login","outcome":"wrong","repeated":)"));
}

TEST_F(AuditFile, IsOpenedAgainWhereItWasMoved) {
    AuditLog audit(file);
    audit.write({"change", "a"});
    fs::rename(file, directory.path / "old");
    audit.write({"change", "b"});
    EXPECT_FALSE(fs::exists(file));
    audit.reopen();
    audit.write({"change", "c"});
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_THAT(lines()[0], HasSubstr(R"("user":"c")"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AuditFile, StaysOpenWhenItCannotBeOpenedAgain) {
    AuditLog audit(file);
    fs::rename(file, directory.path / "old");
    fs::create_directory(file);
    EXPECT_THROW(audit.reopen(), std::runtime_error);
    EXPECT_TRUE(audit.write({"change", "b"}));
    EXPECT_GT(fs::file_size(directory.path / "old"), 0U);
}

TEST(FullAuditFile, IsToldAndCounted) {
    AuditLog audit("/dev/full");
    EXPECT_FALSE(audit.write({"change", "a"}));
    audit.writeSummed({"login", "a"});
    EXPECT_EQ(audit.lost(), 2U);
}

TEST_F(AuditFile, ThatIsAPipeWhichNobodyReadsTakesNothingMore) {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    const int reader = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    AuditLog audit(file);
    const AuditRecord record{"change", std::string(1000, 'x')};
    int written = 0;
    while (written < 10'000 && audit.write(record)) {
        ++written;
    }
    EXPECT_LT(written, 10'000);
    std::string bytes(10'000'000, '\0');
    EXPECT_GT(read(reader, bytes.data(), bytes.size()), 0);
    EXPECT_TRUE(audit.write(record));
    std::signal(SIGPIPE, SIG_IGN);
    close(reader);
    EXPECT_FALSE(audit.write(record));
}

// A disk that is full, for this process: files may not grow beyond some bytes.
class RoomForFiles {
public:
    explicit RoomForFiles(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &_before);
        const rlimit room{bytes, _before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &room);
    }
    ~RoomForFiles() { setrlimit(RLIMIT_FSIZE, &_before); }
    RoomForFiles(const RoomForFiles&) = delete;
    RoomForFiles& operator=(const RoomForFiles&) = delete;

private:
    rlimit _before{};
};

TEST_F(AuditFile, EndsATornLineBeforeTheNext) {
    AuditLog audit(file);
    audit.write({"change", "a"});
    {
        const RoomForFiles room(fs::file_size(file) + 10);
        EXPECT_FALSE(audit.write({"change", "b"}));
        EXPECT_FALSE(audit.write({"change", "c"}));
    }
    EXPECT_EQ(audit.lost(), 2U);
    EXPECT_TRUE(audit.write({"change", "d"}));
    EXPECT_TRUE(audit.write({"change", "e"}));
    ASSERT_EQ(lines().size(), 4U);
    EXPECT_EQ(lines()[1], R"({"time":"2)");
    EXPECT_EQ(nlohmann::json::parse(lines()[2])["user"], "d");
    EXPECT_EQ(nlohmann::json::parse(lines()[3])["user"], "e");
}

TEST_F(AuditFile, EndsALineThatAnotherProcessLeftTorn) {
    std::ofstream(file) << R"({"time":)";
    AuditLog(file).write({"change", "a"});
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(nlohmann::json::parse(lines()[1])["user"], "a");
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
