// smisd as a process: how it starts, refuses to start, and stops.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Names.h"
#include "tests/wire/support/Pair.h"
#include "tests/wire/support/Smisd.h"

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace wire {
namespace {

std::string enumerateHosts() {
    return requestBytes(readFile(std::string(PAIRS) + "/EnumerateHostNames.request"));
}

// The one line on standard error of a smisd that cannot start.
std::string whyNotStarted(const std::filesystem::path& state,
                          const std::vector<std::string>& options) {
    const Result result = run(smisdCommand(state, options));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    const std::size_t start = result.err.find("smisd: ");
    const std::string line = start == std::string::npos ? "" : result.err.substr(start);
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << result.err;
    return line;
}

// The same for a shell.
std::string execution(const std::vector<std::string>& command) {
    std::string text = "exec";
    for (const std::string& argument : command) {
        text += " '" + argument + "'";
    }
    return text;
}

class Start : public testing::Test {
protected:
    smisd::test::TemporaryDirectory directory;
    std::filesystem::path state = directory.path / "state";
    std::filesystem::path usersFile = directory.path / "users";
};

TEST_F(Start, NamesABusyPort) {
    const Smisd first(state);
    const std::string address = "127.0.0.1:" + std::to_string(first.port());
    EXPECT_THAT(whyNotStarted(state, {"--no-auth", "--listen", address}),
                AllOf(HasSubstr("cannot listen on " + address + ": Address already in use"),
                      HasSubstr("--listen")));
    EXPECT_THAT(roundTrip(first.port(), enumerateHosts()), StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(Start, NamesAStateDirectoryThatCannotBeUsed) {
    std::ofstream(state) << "a file";
    EXPECT_THAT(
        whyNotStarted(state, {"--no-auth"}),
        AllOf(HasSubstr("cannot use the state directory " + state.string()), HasSubstr("--state")));
}

TEST_F(Start, NamesAMissingModule) {
    const std::string missing = directory.path / "missing.so";
    EXPECT_THAT(whyNotStarted(state, {"--no-auth", "--module", missing}),
                AllOf(HasSubstr("cannot load the module " + missing), HasSubstr("--module")));
    std::ofstream(missing) << "no library";
    EXPECT_THAT(whyNotStarted(state, {"--no-auth", "--module", missing}), HasSubstr(missing));
}

TEST_F(Start, NamesAMissingMofFile) {
    EXPECT_THAT(whyNotStarted(state, {"--no-auth", "--mof", directory.path / "mof"}),
                HasSubstr((directory.path / "mof" / "access-schema.mof").string()));
}

TEST_F(Start, NamesABadUsersFile) {
    EXPECT_THAT(whyNotStarted(state, {"--users", usersFile}), HasSubstr(usersFile.string()));
    std::ofstream(usersFile) << "alice:secret\n";
    std::filesystem::permissions(usersFile, std::filesystem::perms::owner_read);
    EXPECT_THAT(whyNotStarted(state, {"--users", usersFile}),
                AllOf(HasSubstr(usersFile.string() + ": line 1"), Not(HasSubstr("secret"))));
    std::filesystem::permissions(usersFile, std::filesystem::perms::all);
    EXPECT_THAT(whyNotStarted(state, {"--users", usersFile}), HasSubstr("chmod 600"));
}

TEST_F(Start, NamesABadCertificate) {
    EXPECT_THAT(whyNotStarted(state, {"--no-auth", "--tls", "127.0.0.1:0", "--cert",
                                      directory.path / "c.pem", "--key", directory.path / "k.pem"}),
                HasSubstr("cannot use the certificate " + (directory.path / "c.pem").string()));
}

TEST_F(Start, RefusesWrongUsage) {
    EXPECT_EQ(run(smisdCommand(state, {})).status, 2);
    EXPECT_EQ(run(smisdCommand(state, {"--no-auth", "--listen", "0.0.0.0:0"})).status, 2);
    EXPECT_EQ(run({SMISD, "--frob"}).status, 2);
    EXPECT_EQ(run({SMISD, "--help"}).status, 0);
}

TEST_F(Start, RaisesTheLimitOfOpenFilesOrTellsThatItIsTooLow) {
    struct Row {
        const char* limits;
        bool isTooLow;
    };
    for (const Row& row : {Row{"ulimit -n 100; ", true}, Row{"ulimit -S -n 100; ", false}}) {
        Process smisd({"sh", "-c", row.limits + execution(smisdCommand(state, {"--no-auth"}))});
        EXPECT_THAT(smisd.readLine(), HasSubstr("listening"));
        smisd.signal(SIGTERM);
        const std::string log = smisd.wait().err;
        EXPECT_EQ(log.find("at most 100 files may be open, --max-connections 256 needs 384") !=
                      std::string::npos,
                  row.isTooLow)
            << row.limits << log;
    }
}

TEST_F(Start, MakesTheStateDirectoryPrivate) {
    const Smisd smisd(state);
    EXPECT_EQ(std::filesystem::status(state).permissions(), std::filesystem::perms::owner_all);
}

TEST(HashPassword, RefusesAnEmptyPassword) {
    const Result result = run({SMISD, "hash-password", "alice"}, "\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("empty"));
    EXPECT_EQ(run({SMISD, "hash-password"}, "x\n").status, 2);
}

TEST(Stop, ExitsWithZeroOnEitherSignal) {
    for (const int signal : {SIGTERM, SIGINT}) {
        const Array array;
        Smisd smisd(array.state());
        roundTrip(smisd.port(), enumerateHosts());
        smisd.process().signal(signal);
        EXPECT_EQ(smisd.stop().status, 0) << signal;
    }
}

TEST(Stop, IsHeededFromTheFirstMomentOn) {
    const Array array;
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Smisd(array.state()).stop().status, 0) << i;
    }
}

TEST(Reload, WithoutTlsChangesNothing) {
    const Array array;
    Smisd smisd(array.state());
    smisd.process().signal(SIGHUP);
    EXPECT_THAT(roundTrip(smisd.port(), enumerateHosts()), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_EQ(smisd.stop().status, 0);
}

TEST(Crash, LeavesNoCoreFile) {
    const Array array;
    const std::filesystem::path directory = array.file("cores");
    std::filesystem::create_directory(directory);
    Process smisd({"sh", "-c",
                   "ulimit -c unlimited; cd '" + directory.string() + "'; " +
                       execution(smisdCommand(array.state(), {"--no-auth"}))});
    EXPECT_THAT(smisd.readLine(), HasSubstr("listening"));
    EXPECT_THAT(readFile("/proc/" + std::to_string(smisd.pid()) + "/limits"),
                ContainsRegex("Max core file size  *0  *0 "));
    smisd.signal(SIGABRT);
    EXPECT_EQ(smisd.wait().status, 128 + SIGABRT);
    EXPECT_TRUE(std::filesystem::is_empty(directory));
}

// How often a text stands in the memory of a process.
std::size_t countInMemory(pid_t pid, const std::string& text) {
    const std::string process = "/proc/" + std::to_string(pid);
    std::ifstream memory(process + "/mem", std::ios::binary);
    std::istringstream maps(readFile(process + "/maps"));
    std::size_t count = 0;
    for (std::string line; std::getline(maps, line);) {
        std::size_t begin = 0;
        std::size_t end = 0;
        char dash = 0;
        std::string mode;
        std::istringstream(line) >> std::hex >> begin >> dash >> end >> mode;
        if (!mode.starts_with("rw") || end - begin > 1U << 30U) { // a sanitizer's are larger
            continue;
        }
        std::string bytes(end - begin, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(begin));
        memory.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        for (std::size_t at = 0; (at = bytes.find(text, at)) != std::string::npos; ++at) {
            ++count;
        }
    }
    return count;
}

TEST(Memory, HoldsNoPasswordsOfRequestsThatAreAnswered) {
    const Array array;
    Smisd smisd(array.state(),
                {"--users", makeUsersFile(array.file("users"),
                                          {{"alice", "reader", "a-secret-of-some-length"}})});
    const pid_t pid = smisd.process().pid();
    if (!std::ifstream("/proc/" + std::to_string(pid) + "/mem")) {
        GTEST_SKIP() << "only root can read the memory of smisd";
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Client(smisd, "alice:a-secret-of-some-length").enumerate(hostClass).size(), 3U);
    }
    EXPECT_GT(countInMemory(pid, array.state().string()), 0U);
    std::size_t found = 1;
    for (int i = 0; i < 1000 && found > 0; ++i) { // the connections may still be closing
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        found = countInMemory(pid, "a-secret-of-some-length") +
                countInMemory(pid, "YWxpY2U6YS1zZWNyZXQtb2Ytc29tZS1sZW5ndGg");
    }
    EXPECT_EQ(found, 0U);
}

TEST(Stop, LeavesTheArrayAsItIs) {
    const Array array;
    const std::string before = array.arrayctl({"export"});
    Smisd smisd(array.state());
    roundTrip(smisd.port(), enumerateHosts());
    smisd.stop();
    EXPECT_EQ(array.arrayctl({"export"}), before);
}

TEST(Stop, OutputThatNobodyReadsEndsNothing) {
    const Array array;
    Smisd smisd(array.state());
    smisd.process().closeOutput();
    EXPECT_THAT(roundTrip(smisd.port(), enumerateHosts()), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_EQ(smisd.stop().status, 0);
}

TEST(StandardError, ThatStaysUnreadKeepsNoClientWaiting) {
    const Array array;
    Process smisd({"sh", "-c",
                   "head -c 65536 /dev/zero >&2; " + // as much as a pipe holds
                       execution(smisdCommand(array.state(), {"--no-auth"}))});
    const std::string listening = smisd.readLine();
    const auto port =
        static_cast<unsigned short>(std::stoul(listening.substr(listening.rfind(':') + 1)));
    EXPECT_THAT(roundTrip(port, enumerateHosts()), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(roundTrip(port, requestBytes(readFile(std::string(PAIRS) + "/DeleteHost.request"))),
                HasSubstr("the audit log cannot be written"));
    EXPECT_THAT(roundTrip(port, enumerateHosts()), StartsWith("HTTP/1.1 200 OK\r\n"));
    smisd.signal(SIGTERM);
    EXPECT_EQ(smisd.wait().status, 0);
}

// Each of the requests writes a line, and the pipe holds some 1,400 of them.
TEST(Output, ThatStaysUnreadKeepsNoClientWaiting) {
    const Array array;
    Smisd smisd(array.state());
    std::string hundred;
    for (int i = 0; i < 100; ++i) {
        hundred += requestBytes(readFile(std::string(PAIRS) + "/EnumerateHosts.request"));
    }
    for (int i = 0; i < 20; ++i) {
        const std::string answers = roundTrip(smisd.port(), hundred);
        std::size_t count = 0;
        for (std::size_t at = 0; (at = answers.find("HTTP/1.1 200 OK\r\n", at)) != answers.npos;
             ++at) {
            ++count;
        }
        ASSERT_EQ(count, 100U) << i;
    }
    EXPECT_EQ(smisd.stop().status, 0);
}

} // namespace
} // namespace wire
