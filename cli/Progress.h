#ifndef CLI_PROGRESS_H
#define CLI_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <iosfwd>

namespace cli {

// A bar on a terminal's last line for work that takes over a second. Without a terminal, or without
// a total, nothing is written. The bar is wiped at the end.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    Progress(std::ostream& err, bool isTerminal, std::uint64_t total, Clock::time_point now);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // So much of the total is done.
    void update(std::uint64_t done, Clock::time_point now);

private:
    std::ostream& _err;
    const bool _enabled;
    const std::uint64_t _total;
    Clock::time_point _next; // when the bar is drawn next
    bool _drawn = false;
};

} // namespace cli

#endif
