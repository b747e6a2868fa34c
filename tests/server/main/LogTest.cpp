#include "server/main/Log.h"

#include <chrono>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::MatchesRegex;

namespace smisd::test {
namespace {

template<class Formatter>
std::string lineOf(const std::string& message) {
    std::ostringstream out;
    spdlog::sinks::ostream_sink_mt sink(out);
    sink.set_formatter(std::make_unique<Formatter>());
    const auto time = std::chrono::system_clock::from_time_t(0) + std::chrono::milliseconds(1007);
    sink.log({time, {}, "smisd", spdlog::level::warn, message});
    return out.str();
}

TEST(JsonFormatter, WritesALineOfJson) {
    EXPECT_EQ(lineOf<JsonFormatter>("hello"),
              "{\"time\":\"1970-01-01T00:00:01.007Z\",\"level\":\"warning\","
              "\"message\":\"hello\"}\n");
}

TEST(JsonFormatter, KeepsAnyMessageOnItsLine) {
    const std::string line = lineOf<JsonFormatter>("a\"b\nc\x01\xFF\u009B\u202E");
    EXPECT_THAT(line, EndsWith("\"a\\\"b\\nc\\u0001\uFFFD\\u009B\\u202E\"}\n"));
    EXPECT_EQ(nlohmann::json::parse(line)["message"], "a\"b\nc\x01\uFFFD\u009B\u202E");
}

TEST(TextFormatter, WritesALineThatNoTerminalObeys) {
    EXPECT_THAT(lineOf<TextFormatter>("hello"), EndsWith(" smisd warning: hello\n"));
    EXPECT_THAT(lineOf<TextFormatter>("a\nb\x1B\u009B\u202E\xFF"),
                EndsWith(": a\\u000Ab\\u001B\\u009B\\u202E\uFFFD\n"));
}

// The lines that come of messages, each of a level.
class Summing : public testing::Test {
protected:
    void log(spdlog::level::level_enum level, const std::string& message) {
        sink->log({"smisd", level, message});
    }
    void warn(const std::string& message) { log(spdlog::level::warn, message); }
    // With the sums, which are written at the end.
    std::vector<std::string> lines() {
        sink.reset();
        std::vector<std::string> result;
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);) {
            result.push_back(line);
        }
        return result;
    }

    std::ostringstream out;
    std::optional<SummingSink> sink{[this] {
        auto inner = std::make_shared<spdlog::sinks::ostream_sink_mt>(out);
        inner->set_pattern("%l %v");
        return inner;
    }()};
};

TEST_F(Summing, WritesTheFirstLineOfAKindAndHowManyFollowed) {
    for (int i = 0; i < 10; ++i) {
        warn("192.0.2.7: refused: wrong password");
        warn("refused a connection: " + std::to_string(250 + i) + " are open");
        warn("2001:db8::" + std::to_string(i) + ": refused: wrong password");
    }
    EXPECT_THAT(lines(),
                ElementsAre("warning 192.0.2.7: refused: wrong password",
                            "warning refused a connection: 250 are open",
                            "warning 2001:db8::0: refused: wrong password",
                            "warning refused a connection: 250 are open (and 9 more in 10 s)",
                            "warning 192.0.2.7: refused: wrong password (and 9 more in 10 s)",
                            "warning 2001:db8::0: refused: wrong password (and 9 more in 10 s)"));
}

TEST_F(Summing, TellsAddressesTextsAndLevelsApart) {
    for (const char* text : {"192.0.2.7: refused: a", "192.0.2.8: refused: a",
                             "192.0.2.7: refused: b", "refused: a"}) {
        warn(text);
        log(spdlog::level::err, text);
    }
    EXPECT_EQ(lines().size(), 8U);
}

TEST_F(Summing, LeavesTheServersLifeAndDetailsAlone) {
    for (int i = 0; i < 10; ++i) {
        log(spdlog::level::info, "stopped");
        log(spdlog::level::debug, "refused");
    }
    EXPECT_EQ(lines().size(), 20U);
}

TEST_F(Summing, SumsTheAddressesWhenThereAreTooMany) {
    for (int i = 0; i < 20000; ++i) {
        warn("10.0." + std::to_string(i / 256) + "." + std::to_string(i % 256) +
             ": refused: wrong password");
    }
    warn("the disk is full");
    const std::vector<std::string> written = lines();
    EXPECT_LT(written.size(), 600U);
    EXPECT_THAT(written, Contains("warning the disk is full"));
    EXPECT_THAT(written, Contains(MatchesRegex("warning several addresses: refused: wrong "
                                               "password .and 197.. more in 10 s.")));
}

} // namespace
} // namespace smisd::test
