#include "array/events/EventLog.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
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
    return isPlain(text)
               ? '"' + text + '"'
               : nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

// The file of events, open to append to and locked together with others that append.
class LockedFile {
public:
    explicit LockedFile(const std::filesystem::path& path) : _path(path) {
        // Again, if it was renamed between the two, or while somebody is at it; but nobody is kept
        // for long from telling an event by a process that hangs.
        for (int attempts = 0; attempts < 50; ++attempts) {
            open();
            if (!isOpen() || (flock(_descriptor, LOCK_SH | LOCK_NB) == 0 && isInPlace())) {
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile() { close(); }

    bool isOpen() const { return _descriptor >= 0; }
    int descriptor() const { return _descriptor; }
    std::int64_t size() const { return status().st_size; }
    bool lockAlone() const { return flock(_descriptor, LOCK_EX | LOCK_NB) == 0; }
    bool isInPlace() const {
        struct stat there {};
        return stat(_path.c_str(), &there) == 0 && there.st_ino == status().st_ino;
    }

private:
    void open() {
        close();
        _descriptor =
            ::open(_path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    }
    void close() {
        if (isOpen()) {
            ::close(_descriptor);
        }
    }
    struct stat status() const {
        struct stat status {};
        fstat(_descriptor, &status);
        return status;
    }

    const std::filesystem::path& _path;
    int _descriptor = -1;
};

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

// Who appends shares the file's lock, and who renames the file has it alone: so nobody is writing
// into a file that is renamed, nor renames one that another process has just begun.
void EventLog::append(const std::string& line) const {
    const LockedFile file(_file);
    if (!file.isOpen()) {
        return;
    }
    // One write, so that the lines of several processes don't mix.
    [[maybe_unused]] const ssize_t written = write(file.descriptor(), line.data(), line.size());
    if (file.size() >= eventLogLimit && file.lockAlone() && file.isInPlace() &&
        file.size() >= eventLogLimit) {
        std::rename(_file.c_str(), (_file.string() + ".1").c_str());
    }
}

} // namespace array
