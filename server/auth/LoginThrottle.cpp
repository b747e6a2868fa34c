#include "server/auth/LoginThrottle.h"

#include <algorithm>

#include "server/auth/AddressGroup.h"

namespace smisd {
std::optional<std::chrono::milliseconds> LoginThrottle::admit(const std::string& address) {
    const std::lock_guard lock(_mutex);
    const Clock::time_point now = _now();
    const auto found = _records.find(addressGroup(address));
    if (found == _records.end() || now - found->second.lastFailure > memory) {
        return std::chrono::milliseconds(0);
    }
    Record& record = found->second;
    const Clock::time_point turn = std::max(now, record.next);
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(turn - now);
    if (wait > longestWait) {
        return std::nullopt;
    }
    record.next = turn + record.pause;
    return wait;
}

void LoginThrottle::failed(const std::string& address) {
    const std::lock_guard lock(_mutex);
    const Clock::time_point now = _now();
    forget(now);
    Record& record = _records[addressGroup(address)];
    record.pause = std::clamp<std::chrono::seconds>(record.pause * 2, firstPause, longestPause);
    record.next = std::max(record.next, now + record.pause);
    record.lastFailure = now;
}

void LoginThrottle::forget(Clock::time_point now) {
    std::erase_if(_records,
                  [&](const auto& entry) { return now - entry.second.lastFailure > memory; });
    if (_records.size() >= mostAddresses) {
        _records.erase(std::min_element(
            _records.begin(), _records.end(), [](const auto& left, const auto& right) {
                return left.second.lastFailure < right.second.lastFailure;
            }));
    }
}

} // namespace smisd
