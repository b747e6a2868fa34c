// Logins whose passwords wait to be hashed, and whose turn it is.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace smisd {

// One password is hashed at a time, so that guessers get one processor and the memory of one hash,
// however many they are. Whoever is logged in does not come here; others wait for their turn:
// addresses that have logged in before go first. Then neighbourhoods (IPv4: /24, IPv6: /48) take
// turns, those of which fewer wait before others; in each of them its addresses (IPv6: /64), and of
// an address the logins as they came. So 4096 addresses of one neighbourhood hold up a stranger for
// one turn.
//
// A full queue turns away one of those of whom there are most. Not thread-safe.
class LoginQueue {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::size_t mostWaiting = 64;
    static constexpr std::chrono::seconds longestWait{10}; // for its turn, after its pause
    static constexpr std::size_t mostAddresses = 10000;    // remembered

    // A login is known by a number of the caller's, and pauses until `notBefore`. Returns who is
    // turned away for it: the login itself, another, or nobody.
    std::optional<std::uint64_t> add(std::uint64_t number, const std::string& address,
                                     Clock::time_point notBefore, Clock::time_point now);

    // Takes one out that has waited for too long, if any.
    std::optional<std::uint64_t> takeLate(Clock::time_point now);

    // Takes the one out whose turn it is, if any.
    std::optional<std::uint64_t> takeNext(Clock::time_point now);

    // When takeNext() will have one, as far as is known.
    std::optional<Clock::time_point> nextTurn() const;

    std::size_t size() const { return _waiting.size(); }

    // What became of a login from the address.
    void succeeded(const std::string& address);
    void failed(const std::string& address);

private:
    struct Ticket {
        std::uint64_t number;
        Clock::time_point notBefore;
        std::string group;
        std::string neighbours;
    };

    bool isTrusted(const Ticket& ticket) const { return _trusted.count(ticket.group) != 0; }
    // Of those who wait, by neighbourhood and by group.
    std::map<std::string, unsigned> counts() const;
    std::uint64_t lastTurn(const std::string& network) const;
    std::vector<Ticket>::iterator worst(Clock::time_point now);
    std::uint64_t takeOut(std::vector<Ticket>::iterator ticket);

    std::vector<Ticket> _waiting; // as they came
    std::uint64_t _turn = 0;
    std::map<std::string, std::uint64_t> _lastTurns; // of groups and neighbourhoods
    std::map<std::string, std::uint64_t> _trusted;   // groups that logged in; the turn of it
};

} // namespace smisd
