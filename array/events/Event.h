#ifndef ARRAY_EVENTS_EVENT_H
#define ARRAY_EVENTS_EVENT_H

#include <cstdint>
#include <string>

namespace array {

// Something that happened, for who watches over the array. Texts are UTF-8 and never hold a secret.
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

} // namespace array

#endif
