// Log lines for programs.
#pragma once

#include <memory>

#include <spdlog/formatter.h>

namespace smisd {

// Each message as a line of JSON with the members "time" (UTC), "level" and "message".
class JsonFormatter : public spdlog::formatter {
public:
    void format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) override;
    std::unique_ptr<spdlog::formatter> clone() const override;
};

} // namespace smisd
