// Standard output that waits for a slow reader, but not for one that does not read at all.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <streambuf>
#include <string>

namespace smisd {

// Writes to a descriptor, at each flush, what has come since the last one. When there is no room
// for it within the time, as in a pipe that nobody reads, it is dropped and counted, and so is all
// that comes until there is room again, without waiting. Of a text
// longer than a page only a part may be written; the rest then goes before all that comes later.
//
// Leaves the descriptor as it is: others may have it open. Thread-safe.
class UnblockedOutput final : public std::streambuf {
public:
    UnblockedOutput(int descriptor, std::chrono::milliseconds time)
        : _descriptor(descriptor), _time(time) {}
    ~UnblockedOutput() override { sync(); }

    // Of flushes.
    std::uint64_t dropped() const { return _dropped; }

protected:
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int_type overflow(int_type character) override;
    int sync() override;

private:
    std::size_t write(const std::string& text);
    bool hasRoom();

    const int _descriptor;
    const std::chrono::milliseconds _time;
    std::atomic<std::uint64_t> _dropped{0};
    std::mutex _mutex; // guards what follows
    std::string _text; // since the last flush
    std::string _rest;
    bool _full = false; // when last looked
};

// While it lives, std::cout writes to standard output so.
class StandardOutput {
public:
    StandardOutput();
    ~StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    std::uint64_t dropped() const { return _output.dropped(); }

private:
    UnblockedOutput _output;
    std::streambuf* const _before;
};

} // namespace smisd
