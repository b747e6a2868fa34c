// Slows the guessing of passwords down.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace smisd {

// After a failed login, passwords from the same address (IPv6: the same /64) are looked at one
// after the other: a second apart, and twice as long after each further failure. Failures
// are forgotten when there was none for a while, but not after a successful login: that may be the
// guesser's own.
//
// Thread-safe.
class LoginThrottle {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds firstPause{1};
    static constexpr std::chrono::seconds longestPause{16};
    static constexpr std::chrono::seconds longestWait{30};
    static constexpr std::chrono::minutes memory{10};
    static constexpr std::size_t mostAddresses = 10000; // then the one seen least recently goes

    explicit LoginThrottle(Clock::time_point (*now)() = Clock::now) : _now(now) {}

    // How long a password from the address has to wait until it is looked at; nothing when so many
    // wait already that it would be too long.
    std::optional<std::chrono::milliseconds> admit(const std::string& address);

    // A password from the address was wrong.
    void failed(const std::string& address);

private:
    struct Record {
        std::chrono::seconds pause{0};
        Clock::time_point next;
        Clock::time_point lastFailure;
    };

    void forget(Clock::time_point now);

    Clock::time_point (*const _now)();

    std::mutex _mutex;
    std::map<std::string, Record> _records; // guarded by _mutex
};

} // namespace smisd
