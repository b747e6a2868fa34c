// The audit when it cannot be written, when it is moved, and when clients could fill it.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <sys/mount.h>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Names.h"
#include "tests/wire/support/Pair.h"

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace wire {
namespace {

Answer registerHost(const Client& client, const std::string& name) {
    return client.invoke(identityService, "CreateStorageHardwareID",
                         {{"StorageID", value(name), "string"}, {"IDType", value("5"), "uint16"}});
}

// Whether it becomes true within half a minute.
bool comesTrue(const std::function<bool()>& condition) {
    for (int i = 0; i < 3000 && !condition(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return condition();
}

std::string metrics(const Smisd& smisd) {
    return roundTrip(smisd.port(), "GET /metrics HTTP/1.1\r\nHost: x\r\n\r\n");
}

TEST(FullAudit, RefusesChangesBeforeTheyAreCarriedOut) {
    const Array array;
    const std::string before = array.arrayctl({"export"});
    Smisd smisd(array.state(), {"--no-auth", "--audit", "/dev/full"});
    const Client client(smisd);
    EXPECT_EQ(registerHost(client, "iqn.2026-01.com.example:host9").error(),
              "1 CIM_ERR_FAILED: Nothing was changed: the audit log cannot be written");
    EXPECT_EQ(client.call("DeleteInstance", {{"InstanceName", host(3)}}).error(),
              "1 CIM_ERR_FAILED: Nothing was changed: the audit log cannot be written");
    EXPECT_EQ(client.enumerate(hostClass).size(), 3U);
    EXPECT_EQ(array.arrayctl({"export"}), before);
    EXPECT_THAT(metrics(smisd), HasSubstr("\nsmisd_audit_failures_total 2\n"));
    EXPECT_THAT(smisd.stop().err, HasSubstr("error: the audit log cannot be written: No space "
                                            "left on device\n"));
}

TEST(FullAudit, IsAWarningWhereThatIsWanted) {
    const Array array;
    Smisd smisd(array.state(), {"--no-auth", "--audit", "/dev/full", "--audit-failures", "warn"});
    EXPECT_EQ(registerHost(Client(smisd), "iqn.2026-01.com.example:host9").error(), "");
    EXPECT_EQ(Client(smisd).enumerate(hostClass).size(), 4U);
    EXPECT_THAT(metrics(smisd), HasSubstr("\nsmisd_audit_failures_total 2\n"));
    EXPECT_THAT(smisd.stop().err, HasSubstr("the audit log cannot be written"));
}

// A disk of 64 KiB, where this user may make one.
class SmallDisk : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directory(directory);
        if (mount("small", directory.c_str(), "tmpfs", 0, "size=64k") != 0) {
            GTEST_SKIP() << "only root can make a file system";
        }
    }
    void TearDown() override { umount2(directory.c_str(), MNT_DETACH); }

    const Array array;
    const std::filesystem::path directory = array.file("disk");
    const std::filesystem::path audit = directory / "audit";
    const std::filesystem::path filler = directory / "filler";
};

TEST_F(SmallDisk, ThatIsFullTakesNoChangesUntilThereIsRoomAgain) {
    Smisd smisd(array.state(), {"--no-auth", "--audit", audit.string()});
    const Client client(smisd);
    EXPECT_EQ(registerHost(client, "iqn.2026-01.com.example:before").error(), "");
    std::ofstream(filler) << std::string(100'000, 'x');
    // There is room until the end of the page, and a part of a line fits at last.
    int changed = 0;
    while (changed < 100 &&
           registerHost(client, "iqn.2026-01.com.example:" + std::to_string(changed)).error() ==
               "") {
        ++changed;
    }
    EXPECT_LT(changed, 100);
    EXPECT_NE(registerHost(client, "iqn.2026-01.com.example:full").error(), "");
    EXPECT_EQ(client.enumerate(hostClass).size(), static_cast<std::size_t>(4 + changed));
    std::filesystem::remove(filler);
    EXPECT_EQ(registerHost(client, "iqn.2026-01.com.example:after").error(), "");

    std::size_t begun = 0;
    std::size_t torn = 0;
    std::istringstream in(readFile(audit));
    for (std::string line; std::getline(in, line);) {
        begun += line.ends_with("\"outcome\":\"begun\"}") ? 1U : 0U;
        torn += line.ends_with("}") ? 0U : 1U;
    }
    EXPECT_EQ(begun, static_cast<std::size_t>(2 + changed));
    EXPECT_LE(torn, 1U);
}

TEST(MovedAudit, IsWrittenAnewAfterAReload) {
    const Array array;
    const std::filesystem::path audit = array.file("audit");
    const std::filesystem::path old = array.file("audit.1");
    Smisd smisd(array.state(), {"--no-auth", "--audit", audit.string()});
    const Client client(smisd);
    registerHost(client, "iqn.2026-01.com.example:host8");
    std::filesystem::rename(audit, old);
    registerHost(client, "iqn.2026-01.com.example:host9");
    EXPECT_THAT(readFile(old), HasSubstr("\"change\":2"));
    smisd.process().signal(SIGHUP);
    ASSERT_TRUE(comesTrue([&] { return std::filesystem::exists(audit); }));
    client.call("DeleteInstance", {{"InstanceName", host(3)}});
    EXPECT_THAT(readFile(audit), AllOf(HasSubstr("\"change\":3"), Not(HasSubstr("\"change\":2"))));
    EXPECT_THAT(readFile(old), Not(HasSubstr("\"change\":3")));
}

// Malformed credentials are refused as fast as they come.
TEST(AuditFlood, IsSummed) {
    const Array array;
    const std::filesystem::path audit = array.file("audit");
    Smisd smisd(array.state(),
                {"--users", makeUsersFile(array.file("users"), {}), "--audit", audit.string()});
    const std::string request = "POST /cimom HTTP/1.1\r\nHost: x\r\nAuthorization: Basic !\r\n"
                                "Content-Length: 0\r\n";
    for (int i = 0; i < 100; ++i) { // a third refusal would come after a pause
        roundTrip(smisd.port(), request + "\r\n" + request + "Connection: close\r\n\r\n");
    }
    const std::string log = smisd.stop().err;
    const std::string text = readFile(audit);
    EXPECT_THAT(text, ContainsRegex("^\\{\"time\":\"[^\"]*\",\"audit\":\"login\","
                                    "\"address\":\"127.0.0.1\","
                                    "\"outcome\":\"malformed credentials\"\\}\n"));
    std::size_t repeated = 0;
    const std::string member = "\"repeated\":";
    for (std::size_t at = 0; (at = text.find(member, at)) != std::string::npos;) {
        at += member.size();
        repeated += std::stoul(text.substr(at));
    }
    EXPECT_EQ(repeated, 199U);
    EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 10);
    EXPECT_LT(std::count(log.begin(), log.end(), '\n'), 10);
    EXPECT_THAT(log, ContainsRegex("127.0.0.1: refused: malformed credentials \\(and [0-9]* more "
                                   "in 10 s\\)\n"));
}

} // namespace
} // namespace wire
