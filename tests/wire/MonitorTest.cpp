// What monitoring sees of a running server.
#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Http.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace wire {
namespace {

const std::string hostClass = "CIM_StorageHardwareID";

std::string page(const Smisd& smisd, const std::string& target) {
    return roundTrip(smisd.port(), "GET " + target + " HTTP/1.1\r\nHost: x\r\n\r\n");
}

TEST(Monitor, CountsWhatClientsDo) {
    const Array array;
    const Smisd smisd(array.state(),
                      {"--users", makeUsersFile(array.file("users"), {{"bob", "reader", "secret"}}),
                       "--workers", "3"});
    const Client reader(smisd, "bob:secret");
    reader.enumerate(hostClass);
    reader.enumerate(hostClass);
    reader.enumerate("CIM_Nosuch");
    reader.enumerate("CIM_SharedSecret");
    reader.call("OpenEnumerateInstances", {{"ClassName", classNamed(hostClass)}});
    Client(smisd, "bob:wrong").enumerate(hostClass);
    const std::string metrics = page(smisd, "/metrics");
    EXPECT_THAT(metrics, AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), Not(HasSubstr("bob"))));
    for (const char* line : {
             "smisd_operations_total{operation=\"EnumerateInstances\",status=\"success\"} 2",
             "smisd_operations_total{operation=\"EnumerateInstances\","
             "status=\"CIM_ERR_INVALID_CLASS\"} 1",
             "smisd_operations_total{operation=\"EnumerateInstances\","
             "status=\"CIM_ERR_ACCESS_DENIED\"} 1",
             "smisd_operation_duration_seconds_count{operation=\"EnumerateInstances\"} 4",
             "smisd_operation_duration_seconds_bucket{operation=\"EnumerateInstances\","
             "le=\"+Inf\"} 4",
             "smisd_failed_logins_total 1",
             "smisd_workers 3",
             "smisd_open_enumerations 1",
         }) {
        EXPECT_THAT(metrics, HasSubstr(std::string("\n") + line + "\n"));
    }
    EXPECT_THAT(metrics, testing::ContainsRegex("\nsmisd_connections [1-9]"));
    // Maybe some that have answered already and are not back yet.
    EXPECT_THAT(metrics, testing::ContainsRegex("\nsmisd_workers_busy [0-3]\n"));
}

TEST(Monitor, AsksForNoPasswordButShowsNothingElse) {
    const Array array;
    const Smisd smisd(array.state(), {"--users", makeUsersFile(array.file("users"), {})});
    EXPECT_THAT(page(smisd, "/healthz"), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(page(smisd, "/metrics"), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(page(smisd, "/"), StartsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_THAT(page(smisd, "/metrics/x"), StartsWith("HTTP/1.1 404 Not Found\r\n"));
}

TEST(Monitor, TellsAnArrayThatCanBeReadFromOneThatCannot) {
    const Array array;
    {
        const Smisd smisd(array.state());
        EXPECT_THAT(page(smisd, "/healthz"),
                    AllOf(StartsWith("HTTP/1.1 200 OK\r\n"), HasSubstr("\r\n\r\nok\n")));
    }
    std::ofstream(array.state() / "array.db") << std::string(10000, 'x');
    const Smisd smisd(array.state());
    EXPECT_THAT(page(smisd, "/healthz"), StartsWith("HTTP/1.1 503 Service Unavailable\r\n"));
}

TEST(Monitor, LogsAsJsonOnRequest) {
    const Array array;
    Smisd smisd(array.state(), {"--no-auth", "--log-format", "json"});
    const std::string log = smisd.stop().err;
    EXPECT_THAT(log, HasSubstr("\"level\":\"warning\",\"message\":\"authentication is off"));
    EXPECT_THAT(log, HasSubstr("\"level\":\"info\",\"message\":\"stopped\"}\n"));
}

} // namespace
} // namespace wire
