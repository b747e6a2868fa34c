#pragma once

#include <string>
#include <vector>

namespace scripted {

// What a provider did since clearLog(), in order. May be used from any thread.

enum class Entry {
    Call,    // of the engine, of a builder, of the server: "getObject(13, 0x0D000001)"
    Event,   // "event Unimplemented method invoked ..."
    Trace,   // "trace StorageHardwareIDProvider::enumerateInstances"
    Response // "processing", "deliver //host/root/snia:...", "complete"
};

void note(Entry kind, const std::string& text);

void clearLog();

std::vector<std::string> log();
std::vector<std::string> calls();
std::vector<std::string> traces(); // without the word "trace"

} // namespace scripted
