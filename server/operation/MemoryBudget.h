// How much memory requests may take.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace smisd {

constexpr std::size_t defaultMemory = 256 * 1024 * 1024; // bytes

// Counts what all requests together hold of large things: bodies, trees of elements, operations,
// answers on their way, open enumerations. It is a promise, not a measurement: who takes memory
// reserves it beforehand, and gives up or waits when there is none. A user with a name has half of
// it at most. Thread-safe; outlives its reservations.
class MemoryBudget {
    struct Account {
        std::atomic<std::size_t> used{0}; // bytes
    };

public:
    // What one request, answer or enumeration holds. One thread at a time.
    class Reservation {
    public:
        Reservation() = default; // of no budget: has room for all
        Reservation(MemoryBudget& budget, const std::string& user);
        ~Reservation() { resize(0); }
        Reservation(Reservation&& other) noexcept;
        Reservation& operator=(Reservation&& other) noexcept;

        // Holds `bytes` from now on, more or fewer than before. Returns false, and holds what it
        // held, when there is no room for more.
        bool resize(std::size_t bytes);
        bool grow(std::size_t bytes) { return resize(_bytes + bytes); }

        std::size_t bytes() const { return _bytes; }

        // More than this it never holds.
        std::size_t most() const;

        // Another one of the same user, which holds nothing yet.
        Reservation another() const;

    private:
        MemoryBudget* _budget = nullptr;
        std::shared_ptr<Account> _account;
        std::size_t _bytes = 0;
    };

    // `largeGivenBack` is called, by the thread that gives back, when much less is held than
    // before: the C library keeps what was freed unless it is told to give it to the system.
    explicit MemoryBudget(
        std::size_t limit, std::function<void()> largeGivenBack = [] {})
        : _limit(limit), _largeGivenBack(std::move(largeGivenBack)) {}
    MemoryBudget(const MemoryBudget&) = delete;
    MemoryBudget& operator=(const MemoryBudget&) = delete;

    std::size_t limit() const { return _limit; }
    std::size_t used() const { return _used; }

    // How many times there was no room.
    std::size_t refusals() const { return _refusals; }

private:
    std::size_t share() const { return _limit / 2; } // of a user
    std::shared_ptr<Account> accountOf(const std::string& user);
    bool take(Account* account, std::size_t bytes);
    void giveBack(Account* account, std::size_t bytes);

    static constexpr std::size_t large = 16 * 1024 * 1024;

    const std::size_t _limit; // bytes
    const std::function<void()> _largeGivenBack;
    std::atomic<std::size_t> _used{0};
    std::atomic<std::size_t> _most{0}; // was used since _largeGivenBack was called
    std::atomic<std::size_t> _refusals{0};

    std::mutex _mutex;                                       // guards what follows
    std::map<std::string, std::weak_ptr<Account>> _accounts; // of users who ever held anything
};

} // namespace smisd
