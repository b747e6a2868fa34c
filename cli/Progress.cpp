#include "cli/Progress.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace cli {

namespace {

constexpr auto patience = std::chrono::seconds(1);
constexpr auto interval = std::chrono::milliseconds(100);
constexpr std::uint64_t barWidth = 50;

} // namespace

Progress::Progress(std::ostream& err, bool isTerminal, std::uint64_t total, Clock::time_point now)
    : _err(err), _enabled(isTerminal && total > 0), _total(total), _next(now + patience) {}

Progress::~Progress() {
    if (_drawn)
        _err << "\r\033[K" << std::flush;
}

void Progress::update(std::uint64_t done, Clock::time_point now) {
    if (!_enabled || now < _next)
        return;
    _next = now + interval;
    _drawn = true;
    const double part = static_cast<double>(std::min(done, _total)) / static_cast<double>(_total);
    std::string bar(static_cast<std::size_t>(part * barWidth), '#');
    bar.resize(barWidth, ' ');
    _err << "\r[" << bar << "] " << static_cast<int>(part * 100) << " %" << std::flush;
}

} // namespace cli
