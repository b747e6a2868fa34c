#ifndef ARRAY_EVENTS_EVENT_LOG_H
#define ARRAY_EVENTS_EVENT_LOG_H

#include <filesystem>
#include <functional>
#include <mutex>

#include "array/events/Event.h"

namespace array {

// A file to which events are appended, a line of JSON for each. Several processes may append to the
// same file; their lines don't mix. A file that has grown to eventLogLimit becomes FILE.1, in the
// place of an earlier one, and a new file is begun.
//
// From any thread.
class EventLog {
public:
    explicit EventLog(std::filesystem::path file);

    // Appends an event and shows it to the observer. Does not throw: an event that cannot be
    // written is dropped.
    void publish(const Event& event) noexcept;

    // Who sees each event that this process publishes from now on; an empty function: nobody.
    // Called by the publishing threads, one at a time; it must not publish, and an exception is
    // dropped.
    void observe(std::function<void(const Event&)> observer);

private:
    void append(const std::string& line) const;

    const std::filesystem::path _file;
    std::mutex _mutex;
    std::function<void(const Event&)> _observer; // guarded by _mutex
};

constexpr std::int64_t eventLogLimit = 16 << 20; // bytes

} // namespace array

#endif
