#pragma once

#include <streambuf>
#include <string>

namespace scripted {

// While it lives, what is written to std::cout goes into the log: an entry per flush. What was not
// one line with its end is quoted and marked, so that a test's comparison fails.
class TraceCapture : std::streambuf {
public:
    TraceCapture();
    ~TraceCapture() override;
    TraceCapture(const TraceCapture&) = delete;
    TraceCapture& operator=(const TraceCapture&) = delete;

private:
    int_type overflow(int_type character) override;
    int sync() override;

    std::streambuf* _previous;
    std::string _unflushed;
};

} // namespace scripted
