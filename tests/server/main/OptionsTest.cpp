#include "server/main/Options.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

namespace smisd::test {
namespace {

ParsedOptions parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "smisd");
    return parseOptions(static_cast<int>(arguments.size()), arguments.data());
}

Options accepted(const std::vector<const char*>& arguments) {
    const ParsedOptions parsed = parse(arguments);
    EXPECT_TRUE(parsed.options);
    return parsed.options.value_or(Options());
}

// What is said to wrong usage.
std::string complaintOf(const std::vector<const char*>& arguments) {
    testing::internal::CaptureStderr();
    const ParsedOptions parsed = parse(arguments);
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.exitStatus, exitWrongUsage);
    return testing::internal::GetCapturedStderr();
}

TEST(Options, ServeOnTheLoopbackByDefault) {
    const Options options = accepted({"--users", "u"});
    EXPECT_EQ(toString(options.http.value()), "127.0.0.1:5988");
    EXPECT_FALSE(options.https);
    EXPECT_EQ(options.users, "u");
    EXPECT_EQ(options.state, "");
    EXPECT_FALSE(options.module.empty());
    EXPECT_FALSE(options.mof.empty());
}

TEST(Options, AreTakenFromTheCommandLine) {
    const Options options =
        accepted({"--state", "s", "--listen", "127.0.0.1:1", "--tls", "0.0.0.0:2", "--cert", "c",
                  "--key", "k", "--users", "u", "--module", "m", "--mof", "d"});
    EXPECT_EQ(options.state, "s");
    EXPECT_EQ(toString(options.http.value()), "127.0.0.1:1");
    EXPECT_EQ(toString(options.https.value()), "0.0.0.0:2");
    EXPECT_EQ(options.certificate, "c");
    EXPECT_EQ(options.key, "k");
    EXPECT_EQ(options.module, "m");
    EXPECT_EQ(options.mof, "d");
}

TEST(Options, LastOfAKindCounts) {
    EXPECT_EQ(toString(accepted({"--no-auth", "--listen", "127.0.0.1:1", "--listen", "127.0.0.1:2"})
                           .http.value()),
              "127.0.0.1:2");
}

TEST(Options, TlsAloneServesNoPlainHttp) {
    const Options options =
        accepted({"--tls", "[::1]:5989", "--cert", "c", "--key", "k", "--no-auth"});
    EXPECT_FALSE(options.http);
    EXPECT_EQ(toString(options.https.value()), "[::1]:5989");
}

TEST(Options, LimitsCanBeSet) {
    const Options options =
        accepted({"--no-auth", "--max-connections", "3", "--workers", "2", "--max-body-bytes",
                  "1000", "--request-time", "7", "--max-queued-bytes", "4096", "--stop-time", "9",
                  "--max-enumerations", "5", "--max-depth", "20", "--memory", "512MiB"});
    EXPECT_EQ(options.limits.connections, 3U);
    EXPECT_EQ(options.limits.workers, 2U);
    EXPECT_EQ(options.limits.bodyBytes, 1000U);
    EXPECT_EQ(options.limits.requestTime.count(), 7);
    EXPECT_EQ(options.limits.queueBytes, 4096U);
    EXPECT_EQ(options.limits.stopTime.count(), 9);
    EXPECT_EQ(options.maxEnumerations, 5U);
    EXPECT_EQ(options.memory, 512U * 1024 * 1024);
    EXPECT_EQ(options.limits.depth, 20U);
    EXPECT_THAT(complaintOf({"--no-auth", "--max-depth", "49"}), HasSubstr("--max-depth"));
    EXPECT_THAT(complaintOf({"--no-auth", "--workers", "0"}), HasSubstr("--workers"));
    EXPECT_THAT(complaintOf({"--no-auth", "--max-header-bytes", "70000"}),
                HasSubstr("--max-header-bytes"));
    EXPECT_THAT(complaintOf({"--no-auth", "--request-time", "-1"}), HasSubstr("--request-time"));
}

TEST(Options, AChangeThatCannotBeAuditedIsRefusedUnlessSaidOtherwise) {
    EXPECT_EQ(accepted({"--no-auth"}).auditFailures, AuditFailures::refuse);
    EXPECT_EQ(accepted({"--no-auth", "--audit-failures", "refuse"}).auditFailures,
              AuditFailures::refuse);
    EXPECT_EQ(accepted({"--no-auth", "--audit-failures", "warn"}).auditFailures,
              AuditFailures::warn);
    EXPECT_THAT(complaintOf({"--no-auth", "--audit-failures", "x"}), HasSubstr("--audit-failures"));
}

TEST(Options, SomebodyMustBeAbleToLogIn) {
    EXPECT_THAT(complaintOf({}), HasSubstr("say who may log in: --users FILE, or --no-auth"));
    EXPECT_THAT(complaintOf({"--users", "u", "--no-auth"}), HasSubstr("exclude each other"));
}

TEST(Options, NoAuthIsForTheLoopbackOnly) {
    for (const char* address : {"0.0.0.0:1", "192.0.2.1:1", "[::]:1"}) {
        EXPECT_THAT(complaintOf({"--no-auth", "--allow-remote-http", "--listen", address}),
                    HasSubstr("--no-auth is accepted on loopback addresses only"))
            << address;
        EXPECT_THAT(complaintOf({"--no-auth", "--tls", address, "--cert", "c", "--key", "k"}),
                    HasSubstr("--no-auth is accepted on loopback addresses only"))
            << address;
    }
    accepted({"--no-auth", "--listen", "127.8.9.10:1"});
    accepted({"--no-auth", "--listen", "[::1]:1"});
    accepted({"--no-auth", "--listen", "localhost:1"});
}

TEST(Options, PlainHttpIsForTheLoopbackUnlessForced) {
    EXPECT_THAT(complaintOf({"--users", "u", "--listen", "0.0.0.0:1"}),
                HasSubstr("--allow-remote-http"));
    accepted({"--users", "u", "--listen", "0.0.0.0:1", "--allow-remote-http"});
}

TEST(Options, TlsNeedsItsFiles) {
    EXPECT_THAT(complaintOf({"--users", "u", "--tls", "[::1]:1"}), HasSubstr("--cert FILE"));
    EXPECT_THAT(complaintOf({"--users", "u", "--tls", "[::1]:1", "--cert", "c"}),
                HasSubstr("--key FILE"));
}

TEST(Options, BadAddressesAreNamed) {
    for (const char* address :
         {"5988", "127.0.0.1", "127.0.0.1:", "127.0.0.1:x", "127.0.0.1:65536", "127.0.0.1:-1",
          "::1:5988", "[127.0.0.1]:1", "example.com:1", ":1"}) {
        EXPECT_THAT(complaintOf({"--no-auth", "--listen", address}),
                    HasSubstr(std::string("--listen ") + address))
            << address;
    }
}

TEST(Options, UnknownOnesAreWrongUsage) {
    EXPECT_THAT(complaintOf({"--no-auth", "--frob"}), HasSubstr("--frob"));
    EXPECT_THAT(complaintOf({"--no-auth", "--log-level", "loud"}), HasSubstr("--log-level"));
    complaintOf({"--listen"});
}

TEST(Options, HelpListsTheLimits) {
    testing::internal::CaptureStdout();
    const ParsedOptions parsed = parse({"--help"});
    const std::string help = testing::internal::GetCapturedStdout();
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.exitStatus, exitStopped);
    for (const char* text : {"--max-connections", "256", "--max-body-bytes", "16777216",
                             "--request-time", "30", "--max-queued-bytes", "1048576", "--stop-time",
                             "60", "--workers", "--state", "--no-auth"}) {
        EXPECT_THAT(help, HasSubstr(text));
    }
}

TEST(Options, AreAllInTheManualPage) {
    testing::internal::CaptureStdout();
    const ParsedOptions parsed = parse({"man"});
    const std::string page = testing::internal::GetCapturedStdout();
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.exitStatus, exitStopped);
    for (const char* text :
         {".TH SMISD 8 ", "\\-\\-state DIR", "\\-\\-listen ADDR:PORT", "\\-\\-no\\-auth",
          ".SS \"Limits\"", "Operations carried out at once (default: 32)",
          ".SS \"hash\\-password NAME", ".B \"1\"\nCannot start"}) {
        EXPECT_THAT(page, HasSubstr(text));
    }
}

// It is made where smisd is built, and read where it is installed.
TEST(Options, ManualPageNamesNoPathOfTheBuild) {
    testing::internal::CaptureStdout();
    parse({"man"});
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::Not(HasSubstr(accepted({"--no-auth"}).module.parent_path().string())));
}

TEST(Options, HashPasswordNeedsAName) {
    EXPECT_EQ(accepted({"hash-password", "alice"}).hashPasswordFor, "alice");
    complaintOf({"hash-password"});
}

std::filesystem::path programDirectory() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

TEST(BesideProgram, IsTheFirstThatExists) {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(besideProgram({"none", std::filesystem::path("..") / programDirectory().filename() /
                                         program.filename()}),
              program);
}

TEST(BesideProgram, IsTheFirstOneWhenNoneExists) {
    EXPECT_EQ(besideProgram({"../none/of", "none"}), programDirectory().parent_path() / "none/of");
}

} // namespace
} // namespace smisd::test
