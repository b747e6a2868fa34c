#include "server/main/Log.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <tuple>

#include <boost/asio/ip/address.hpp>
#include <fmt/chrono.h>
#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

#include "server/auth/AddressGroup.h"
#include "server/operation/Printable.h"

namespace smisd {
namespace {

constexpr std::size_t longestExample = 1024;

std::unique_ptr<spdlog::formatter> formatterNamed(const std::string& format) {
    if (format == "json") {
        return std::make_unique<JsonFormatter>();
    }
    return std::make_unique<TextFormatter>();
}

// The address in "192.0.2.7: refused"; "" for another text.
std::string_view leadingAddress(std::string_view text) {
    const std::string_view head = text.substr(0, text.find(": "));
    boost::system::error_code error;
    boost::asio::ip::make_address(head, error);
    return error ? std::string_view() : head;
}

std::string withoutNumbers(std::string_view text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    std::string out;
    for (const char c : text) {
        if (!isDigit(c)) {
            out += c;
        } else if (!out.ends_with('#')) {
            out += '#';
        }
    }
    return out;
}

} // namespace

void startLog(const std::string& level, const std::string& format) {
    const auto sink = std::make_shared<SummingSink>(std::make_shared<StandardErrorSink>());
    auto logger = std::make_shared<spdlog::logger>("smisd", sink);
    logger->set_formatter(formatterNamed(format));
    spdlog::set_default_logger(std::move(logger));
    spdlog::set_level(spdlog::level::from_str(level));
}

void endLog() {
    spdlog::shutdown();
}

void TextFormatter::format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) {
    const std::string text = printable({message.payload.data(), message.payload.size()});
    spdlog::details::log_msg escaped = message;
    escaped.payload = text;
    _pattern.format(escaped, line);
}

std::unique_ptr<spdlog::formatter> TextFormatter::clone() const {
    return std::make_unique<TextFormatter>();
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
        printable(json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)) +
        '\n';
    line.append(text.data(), text.data() + text.size());
}

std::unique_ptr<spdlog::formatter> JsonFormatter::clone() const {
    return std::make_unique<JsonFormatter>();
}

LineKind::LineKind(const spdlog::details::log_msg& message) : level(message.level) {
    const std::string_view whole(message.payload.data(),
                                 std::min(message.payload.size(), longestExample));
    const std::string_view found = leadingAddress(whole);
    address = addressGroup(std::string(found));
    text = withoutNumbers(whole.substr(found.size()));
    example = whole;
}

LineKind LineKind::wider() const {
    LineKind kind = *this;
    if (!address.empty()) {
        kind.address.clear();
        kind.example = "several addresses" + text;
    }
    return kind;
}

bool LineKind::operator<(const LineKind& other) const {
    return std::tie(level, address, text) < std::tie(other.level, other.address, other.text);
}

SummingSink::SummingSink(spdlog::sink_ptr next)
    : _sink(std::move(next)), _repeats([this](const LineKind& kind, std::uint64_t repeats) {
          const std::string text = fmt::format("{} (and {} more in {} s)", kind.example, repeats,
                                               RepeatSums<LineKind>::period.count());
          _sink->log({"smisd", kind.level, text});
      }) {}

void SummingSink::log(const spdlog::details::log_msg& message) {
    if (message.level >= spdlog::level::warn) {
        const LineKind kind(message);
        if (!_repeats.isFirst(kind, kind.wider())) {
            return;
        }
    }
    _sink->log(message);
}

// Lines of the audit, which may go there too, stay whole.
void StandardErrorSink::sink_it_(const spdlog::details::log_msg& message) {
    spdlog::memory_buf_t line;
    formatter_->format(message, line);
    flockfile(stderr);
    const std::unique_ptr<FILE, decltype(&funlockfile)> whole(stderr, funlockfile);
    _output.sputn(line.data(), static_cast<std::streamsize>(line.size()));
    _output.pubsync();
}

} // namespace smisd
