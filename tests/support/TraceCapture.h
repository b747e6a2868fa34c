#pragma once

#include <map>
#include <mutex>
#include <streambuf>
#include <string>
#include <thread>

namespace scripted {

// While it lives, what is written to std::cout goes into the log: an entry per flush, for each
// thread by itself. What was not one line with its end, or came in more than one piece, is quoted
// and marked, so that a test's comparison fails.
class TraceCapture : std::streambuf {
public:
    TraceCapture();
    ~TraceCapture() override;
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

private:
    struct Unflushed {
        std::string text;
        int pieces = 0;
    };

    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int_type overflow(int_type character) override;
    int sync() override;

    std::streambuf* const _previous;
    std::mutex _mutex;
    std::map<std::thread::id, Unflushed> _unflushed; // guarded by _mutex
};

} // namespace scripted
