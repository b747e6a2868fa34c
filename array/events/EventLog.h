#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

namespace array {

// Something that happened, for those who watch over the array. Texts are UTF-8 and never hold a
// secret.
struct Event {
    std::string type;      // "method-invoked", "unimplemented" or "weak-secret"
    std::string text;      // what happened
    std::string keyValues; // pairs "name=value", joined by ", "

    // As providers gave them; 0 and empty in the array's own events.
    int channel = 0;
    int severity = 0;
    std::string operation;
    std::string file;
    int line = 0;
};

// One JSON object without line ends: the members of Event by their names, and before them "time",
// as "2026-01-31T12:00:00.000000Z", and "process", the process's id.
std::string jsonOf(const Event& event, std::int64_t microsecondsSince1970);

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

    // Sets the function that is shown each event that this process publishes from now on; an empty
    // one for none. It is called by the publishing threads, one at a time. It must not publish; an
    // exception is dropped.
    void observe(std::function<void(const Event&)> observer);

private:
    void append(const std::string& line) const;

    const std::filesystem::path _file;
    std::mutex _mutex;
    std::function<void(const Event&)> _observer; // guarded by _mutex
};

constexpr std::int64_t eventLogLimit = 16 << 20; // bytes

} // namespace array
