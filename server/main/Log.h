// The server's log, on standard error.
#pragma once

#include <memory>
#include <string>

#include <spdlog/formatter.h>

namespace smisd {

// `level`: "debug", "info", "warning" or "error"; `format`: "text" or "json".
void startLog(const std::string& level, const std::string& format);

// Each message as a line of JSON with the members "time" (UTC), "level" and "message".
class JsonFormatter : public spdlog::formatter {
public:
    void format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) override;
    std::unique_ptr<spdlog::formatter> clone() const override;
};

} // namespace smisd
