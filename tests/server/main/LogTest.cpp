#include "server/main/Log.h"

#include <algorithm>
#include <chrono>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

namespace smisd::test {
namespace {

std::string lineOf(const std::string& message) {
    std::ostringstream out;
    spdlog::sinks::ostream_sink_mt sink(out);
    sink.set_formatter(std::make_unique<JsonFormatter>());
    const auto time = std::chrono::system_clock::from_time_t(0) + std::chrono::milliseconds(1007);
    sink.log({time, {}, "smisd", spdlog::level::warn, message});
    return out.str();
}

TEST(JsonFormatter, WritesALineOfJson) {
    EXPECT_EQ(lineOf("hello"), "{\"time\":\"1970-01-01T00:00:01.007Z\",\"level\":\"warning\","
                               "\"message\":\"hello\"}\n");
}

TEST(JsonFormatter, KeepsAnyMessageOnItsLine) {
    const std::string line = lineOf("a\"b\nc\x01\xFF");
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
    EXPECT_EQ(nlohmann::json::parse(line)["message"], "a\"b\nc\x01\xEF\xBF\xBD");
}

} // namespace
} // namespace smisd::test
