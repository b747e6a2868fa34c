// The server's log, on standard error.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <unistd.h>

#include <spdlog/formatter.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/sink.h>

#include "server/auth/RepeatSums.h"
#include "server/main/StandardOutput.h"

namespace smisd {

// `level`: "debug", "info", "warning" or "error"; `format`: "text" or "json".
void startLog(const std::string& level, const std::string& format);

// Writes the sums that are left. Nothing is told to the log afterwards.
void endLog();

// Each message as a line of text: time (local), "smisd", level, message. What could turn or move
// the text on a terminal is escaped.
class TextFormatter : public spdlog::formatter {
public:
    void format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) override;
    std::unique_ptr<spdlog::formatter> clone() const override;

private:
    spdlog::pattern_formatter _pattern{"%Y-%m-%dT%H:%M:%S.%e smisd %l: %v"};
};

// Each message as a line of JSON with the members "time" (UTC), "level" and "message".
class JsonFormatter : public spdlog::formatter {
public:
    void format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) override;
    std::unique_ptr<spdlog::formatter> clone() const override;
};

// Warnings and errors of one kind: they differ in their numbers only.
struct LineKind {
    spdlog::level::level_enum level = spdlog::level::warn;
    std::string address;                 // with which a line begins, or its network; "" for none
    std::string text;                    // behind the address, with # for each number
    std::string example = "other lines"; // the first one, or a part of it; not compared

    explicit LineKind(const spdlog::details::log_msg& message);
    LineKind() = default;
    // Those of all addresses.
    LineKind wider() const;
    bool operator<(const LineKind& other) const;
};

// Passes messages on to another sink. Of warnings and errors of one kind, the first is passed on at
// once, and then the sum of those that follow: "192.0.2.7: refused: wrong password (and 9311 more
// in 10 s)". Thread-safe, if the other one is.
class SummingSink : public spdlog::sinks::sink {
public:
    explicit SummingSink(spdlog::sink_ptr next);

    void log(const spdlog::details::log_msg& message) override;
    void flush() override { _sink->flush(); }
    void set_pattern(const std::string& pattern) override { _sink->set_pattern(pattern); }
    void set_formatter(std::unique_ptr<spdlog::formatter> formatter) override {
        _sink->set_formatter(std::move(formatter));
    }

private:
    const spdlog::sink_ptr _sink;
    RepeatSums<LineKind> _repeats;
};

// Standard error. Of a pipe that nobody has read for a second, what does not fit is dropped, so
// that clients are served all the same.
class StandardErrorSink : public spdlog::sinks::base_sink<std::mutex> {
protected:
    void sink_it_(const spdlog::details::log_msg& message) override;
    void flush_() override {}

private:
    UnblockedOutput _output{STDERR_FILENO, std::chrono::seconds(1)};
};

} // namespace smisd
