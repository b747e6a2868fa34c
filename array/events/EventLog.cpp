#include "array/events/EventLog.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

namespace array {

namespace {

std::string timeText(std::int64_t microseconds) {
    const std::time_t seconds = microseconds / 1000000;
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char day[24] = "";
    std::strftime(day, sizeof day, "%Y-%m-%dT%H:%M:%S", &parts);
    char fraction[12] = "";
    std::snprintf(fraction, sizeof fraction, ".%06dZ", static_cast<int>(microseconds % 1000000));
    return std::string(day) + fraction;
}

// Whether a text, as most do, has no character that JSON escapes.
bool isPlain(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
}

std::string jsonText(const std::string& text) {
    return isPlain(text) ? '"' + text + '"'
                         : nlohmann::json(text).dump(-1, ' ', false,
                                                     nlohmann::json::error_handler_t::replace);
}

} // namespace

std::string jsonOf(const Event& event, std::int64_t microsecondsSince1970) {
    std::string json = "{\"time\":" + jsonText(timeText(microsecondsSince1970));
    const auto add = [&json](const char* name, const std::string& value) {
        json.append(",\"").append(name).append("\":").append(value);
    };
    add("process", std::to_string(getpid()));
    add("type", jsonText(event.type));
    add("text", jsonText(event.text));
    add("keyValues", jsonText(event.keyValues));
    add("channel", std::to_string(event.channel));
    add("severity", std::to_string(event.severity));
    add("operation", jsonText(event.operation));
    add("file", jsonText(event.file));
    add("line", std::to_string(event.line));
    return json + '}';
}

EventLog::EventLog(std::filesystem::path file) : _file(std::move(file)) {}

void EventLog::publish(const Event& event) noexcept try {
    const std::chrono::microseconds now = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    append(jsonOf(event, now.count()) + '\n');
    const std::lock_guard lock(_mutex);
    if (_observer) {
        _observer(event);
    }
} catch (...) {
    // Dropped, as promised.
}

void EventLog::observe(std::function<void(const Event&)> observer) {
    const std::lock_guard lock(_mutex);
    _observer = std::move(observer);
}

void EventLog::append(const std::string& line) const {
    const int descriptor =
        open(_file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0) {
        return;
    }
    // One write, so that the lines of several processes don't mix.
    [[maybe_unused]] const ssize_t written = write(descriptor, line.data(), line.size());
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && status.st_size >= eventLogLimit) {
        std::rename(_file.c_str(), (_file.string() + ".1").c_str());
    }
    close(descriptor);
}

} // namespace array
