#include "server/auth/LoginQueue.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <tuple>
#include <utility>

#include "server/auth/AddressGroup.h"

namespace smisd {
namespace {

// Makes room in a map from networks to the turn in which they were seen: the oldest goes.
void forgetOldest(std::map<std::string, std::uint64_t>& turns) {
    if (turns.size() >= LoginQueue::mostAddresses) {
        turns.erase(
            std::min_element(turns.begin(), turns.end(), [](const auto& left, const auto& right) {
                return left.second < right.second;
            }));
    }
}

} // namespace

std::optional<std::uint64_t> LoginQueue::add(std::uint64_t number, const std::string& address,
                                             Clock::time_point notBefore, Clock::time_point now) {
    _waiting.push_back(
        {number, std::max(notBefore, now), addressGroup(address), neighbourhood(address)});
    if (_waiting.size() <= mostWaiting) {
        return std::nullopt;
    }
    try {
        return takeOut(worst(now));
    } catch (const std::bad_alloc&) {
        return takeOut(std::prev(_waiting.end()));
    }
}

std::uint64_t LoginQueue::takeOut(std::vector<Ticket>::iterator ticket) {
    const std::uint64_t number = ticket->number;
    _waiting.erase(ticket);
    return number;
}

std::map<std::string, unsigned> LoginQueue::counts() const {
    std::map<std::string, unsigned> counts;
    for (const Ticket& ticket : _waiting) {
        ++counts[ticket.neighbours];
        ++counts[ticket.group];
    }
    return counts;
}

// Who pauses has failed before, and goes first. Then one of the largest crowd; of those the one
// that came last.
std::vector<LoginQueue::Ticket>::iterator LoginQueue::worst(Clock::time_point now) {
    const std::map<std::string, unsigned> crowds = counts();
    const auto badness = [&](const Ticket& ticket) {
        return std::tuple(!isTrusted(ticket), ticket.notBefore > now, crowds.at(ticket.neighbours),
                          crowds.at(ticket.group));
    };
    return std::prev(std::max_element(_waiting.rbegin(), _waiting.rend(),
                                      [&](const Ticket& left, const Ticket& right) {
                                          return badness(left) < badness(right);
                                      })
                         .base());
}

std::optional<std::uint64_t> LoginQueue::takeLate(Clock::time_point now) {
    const auto late = std::find_if(_waiting.begin(), _waiting.end(), [&](const Ticket& ticket) {
        return now - ticket.notBefore > longestWait;
    });
    return late == _waiting.end() ? std::nullopt : std::optional(takeOut(late));
}

std::optional<std::uint64_t> LoginQueue::takeNext(Clock::time_point now) {
    const std::map<std::string, unsigned> crowds = counts();
    const auto order = [&](const Ticket& ticket) {
        return std::tuple(ticket.notBefore > now, !isTrusted(ticket), lastTurn(ticket.neighbours),
                          crowds.at(ticket.neighbours), lastTurn(ticket.group));
    };
    const auto next = std::min_element(
        _waiting.begin(), _waiting.end(),
        [&](const Ticket& left, const Ticket& right) { return order(left) < order(right); });
    if (next == _waiting.end() || next->notBefore > now) {
        return std::nullopt;
    }
    ++_turn;
    for (const std::string& network : {next->neighbours, next->group}) {
        forgetOldest(_lastTurns);
        _lastTurns[network] = _turn;
    }
    return takeOut(next);
}

std::optional<LoginQueue::Clock::time_point> LoginQueue::nextTurn() const {
    const auto first = std::min_element(
        _waiting.begin(), _waiting.end(),
        [](const Ticket& left, const Ticket& right) { return left.notBefore < right.notBefore; });
    return first == _waiting.end() ? std::nullopt : std::optional(first->notBefore);
}

// A guesser behind the same address takes the trust away, so that it gives the guesser nothing.
void LoginQueue::succeeded(const std::string& address) {
    forgetOldest(_trusted);
    _trusted[addressGroup(address)] = _turn;
}

void LoginQueue::failed(const std::string& address) {
    _trusted.erase(addressGroup(address));
}

std::uint64_t LoginQueue::lastTurn(const std::string& network) const {
    const auto found = _lastTurns.find(network);
    return found == _lastTurns.end() ? 0 : found->second;
}

} // namespace smisd
