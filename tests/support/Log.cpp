#include "tests/support/Log.h"

#include <mutex>
#include <utility>

namespace scripted {

namespace {

std::mutex mutex;
std::vector<std::pair<Entry, std::string>> entries;

template<class Wanted>
std::vector<std::string> select(Wanted wanted) {
    const std::lock_guard lock(mutex);
    std::vector<std::string> texts;
    for (const auto& [kind, text] : entries) {
        if (wanted(kind)) {
            texts.push_back(text);
        }
    }
    return texts;
}

const std::string TRACE = "trace ";

} // namespace

void note(Entry kind, const std::string& text) {
    const std::string word = kind == Entry::Trace ? TRACE : kind == Entry::Event ? "event " : "";
    const std::lock_guard lock(mutex);
    entries.emplace_back(kind, word + text);
}

void clearLog() {
    const std::lock_guard lock(mutex);
    entries.clear();
}

std::vector<std::string> log() {
    return select([](Entry) { return true; });
}

std::vector<std::string> calls() {
    return select([](Entry kind) { return kind == Entry::Call; });
}

std::vector<std::string> traces() {
    std::vector<std::string> lines = select([](Entry kind) { return kind == Entry::Trace; });
    for (std::string& line : lines) {
        line.erase(0, TRACE.size());
    }
    return lines;
}

} // namespace scripted
