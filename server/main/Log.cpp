#include "server/main/Log.h"

#include <chrono>
#include <string>

#include <fmt/chrono.h>
#include <nlohmann/json.hpp>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace smisd {

void startLog(const std::string& level, const std::string& format) {
    spdlog::set_default_logger(spdlog::stderr_logger_mt("smisd"));
    if (format == "json") {
        spdlog::set_formatter(std::make_unique<JsonFormatter>());
    } else {
        spdlog::set_pattern("%Y-%m-%dT%H:%M:%S.%e smisd %l: %v");
    }
    spdlog::set_level(spdlog::level::from_str(level));
}

void JsonFormatter::format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(message.time);
    const auto rest = std::chrono::floor<std::chrono::milliseconds>(message.time - seconds);
    const auto level = spdlog::level::to_string_view(message.level);
    nlohmann::ordered_json json;
    json["time"] =
        fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                    fmt::gmtime(std::chrono::system_clock::to_time_t(seconds)), rest.count());
    json["level"] = std::string(level.data(), level.size());
    json["message"] = std::string(message.payload.data(), message.payload.size());
    const std::string text =
        json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
    line.append(text.data(), text.data() + text.size());
}

std::unique_ptr<spdlog::formatter> JsonFormatter::clone() const {
    return std::make_unique<JsonFormatter>();
}

} // namespace smisd
