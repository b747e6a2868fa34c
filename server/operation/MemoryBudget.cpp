#include "server/operation/MemoryBudget.h"

#include <limits>
#include <utility>

namespace smisd {
namespace {

// Adds unless the sum would be more than `most`.
bool addWithin(std::atomic<std::size_t>& sum, std::size_t bytes, std::size_t most) {
    std::size_t before = sum.load(std::memory_order_relaxed);
    do {
        if (bytes > most || before > most - bytes) {
            return false;
        }
    } while (!sum.compare_exchange_weak(before, before + bytes, std::memory_order_relaxed));
    return true;
}

} // namespace

MemoryBudget::Reservation::Reservation(MemoryBudget& budget, const std::string& user)
    : _budget(&budget), _account(user.empty() ? nullptr : budget.accountOf(user)) {}

MemoryBudget::Reservation::Reservation(Reservation&& other) noexcept
    : _budget(std::exchange(other._budget, nullptr)), _account(std::move(other._account)),
      _bytes(std::exchange(other._bytes, 0)) {}

MemoryBudget::Reservation& MemoryBudget::Reservation::operator=(Reservation&& other) noexcept {
    std::swap(_budget, other._budget);
    std::swap(_account, other._account);
    std::swap(_bytes, other._bytes);
    return *this;
}

bool MemoryBudget::Reservation::resize(std::size_t bytes) {
    if (_budget != nullptr && bytes > _bytes && !_budget->take(_account.get(), bytes - _bytes)) {
        return false;
    }
    if (_budget != nullptr && bytes < _bytes) {
        _budget->giveBack(_account.get(), _bytes - bytes);
    }
    _bytes = bytes;
    return true;
}

std::size_t MemoryBudget::Reservation::most() const {
    if (_budget == nullptr) {
        return std::numeric_limits<std::size_t>::max();
    }
    return _account ? _budget->share() : _budget->limit();
}

MemoryBudget::Reservation MemoryBudget::Reservation::another() const {
    Reservation made;
    made._budget = _budget;
    made._account = _account;
    return made;
}

std::shared_ptr<MemoryBudget::Account> MemoryBudget::accountOf(const std::string& user) {
    const std::lock_guard lock(_mutex);
    std::weak_ptr<Account>& kept = _accounts[user];
    std::shared_ptr<Account> account = kept.lock();
    if (!account) {
        account = std::make_shared<Account>();
        kept = account;
    }
    return account;
}

bool MemoryBudget::take(Account* account, std::size_t bytes) {
    if (account != nullptr && !addWithin(account->used, bytes, share())) {
        ++_refusals;
        return false;
    }
    if (!addWithin(_used, bytes, _limit)) {
        if (account != nullptr) {
            account->used -= bytes;
        }
        ++_refusals;
        return false;
    }
    if (_used > _most) {
        _most = _used.load();
    }
    return true;
}

void MemoryBudget::giveBack(Account* account, std::size_t bytes) {
    if (account != nullptr) {
        account->used -= bytes;
    }
    const std::size_t left = _used -= bytes;
    std::size_t most = _most;
    if (most > left && most - left >= large && _most.compare_exchange_strong(most, left)) {
        _largeGivenBack();
    }
}

} // namespace smisd
