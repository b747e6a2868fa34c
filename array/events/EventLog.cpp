#include "array/events/EventLog.h"

#include <chrono>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace array {

EventLog::EventLog(std::filesystem::path file) : _file(std::move(file)) {}

void EventLog::publish(const Event& event) noexcept try {
    const std::chrono::microseconds now = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    append(jsonOf(event, now.count()) + '\n');
    const std::lock_guard lock(_mutex);
    if (_observer)
        _observer(event);
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
    if (descriptor < 0)
        return;
    // One write, so that the lines of several processes don't mix.
    [[maybe_unused]] const ssize_t written = write(descriptor, line.data(), line.size());
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && status.st_size >= eventLogLimit)
        std::rename(_file.c_str(), (_file.string() + ".1").c_str());
    close(descriptor);
}

} // namespace array
