#include "server/http/SendQueue.h"

#include <chrono>
#include <utility>

#include "server/http/HttpMessage.h"

namespace smisd {
namespace {

constexpr std::chrono::milliseconds timeBetweenLooks{100};
constexpr std::chrono::seconds longestWithoutMemory{10};
constexpr std::size_t shortText = 16 * 1024; // bytes

} // namespace

void SendQueue::holdIn(MemoryBudget::Reservation memory) {
    const std::lock_guard lock(_mutex);
    _spares.clear();
    _held = 0;
    _memory = std::move(memory);
}

void SendQueue::reserve(const std::string& text, WorkerPool& workers) {
    std::unique_lock lock(_mutex);
    if (!take(text.capacity())) {
        lock.unlock();
        workers.whileWaiting([&] { awaitRoom(text.capacity()); });
        lock.lock();
    }
    if (_lost) {
        throw ConnectionLost();
    }
    _count += text.size();
}

void SendQueue::reserveAtOnce(const std::string& text) {
    const std::lock_guard lock(_mutex);
    _count += text.size();
    hold(_held + text.capacity());
}

// Whether the worker need not wait: it has the room, or its client is lost.
bool SendQueue::take(std::size_t held) {
    if (_lost) {
        return true;
    }
    if (_count >= _limit) {
        return false;
    }
    const bool fits = _memory.resize(_held + held);
    if (!fits && (_count > 0 || held > shortText)) {
        return false;
    }
    _held += held;
    return true;
}

void SendQueue::awaitRoom(std::size_t held) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + longestWithoutMemory;
    std::unique_lock lock(_mutex);
    while (!take(held)) {
        if (_count >= _limit) {
            _changed.wait(lock); // for the client
            continue;
        }
        if (_count == 0 && Clock::now() >= deadline) {
            _lost = true;
            return;
        }
        lock.unlock();
        _outOfMemory();
        lock.lock();
        _changed.wait_for(lock, timeBetweenLooks); // nobody tells what others give back
    }
}

void SendQueue::hold(std::size_t held) {
    _held = held;
    _memory.resize(held);
}

std::string SendQueue::spareText() {
    const std::lock_guard lock(_mutex);
    if (_spares.empty()) {
        return {};
    }
    std::string text = std::move(_spares.back());
    _spares.pop_back();
    hold(_held - text.capacity());
    return text;
}

std::string_view SendQueue::next(std::size_t most) const {
    return std::string_view(_texts.front()).substr(_sentOfFirst, most);
}

void SendQueue::sent(std::size_t count) {
    const std::lock_guard lock(_mutex);
    _count -= count;
    _changed.notify_one();
    _sentOfFirst += count;
    if (_sentOfFirst < _texts.front().size()) {
        return;
    }
    if (_spares.size() < mostSpares) {
        _texts.front().clear();
        _spares.push_back(std::move(_texts.front()));
    } else {
        hold(_held - _texts.front().capacity());
    }
    _texts.pop_front();
    _sentOfFirst = 0;
}

void SendQueue::lose() {
    const std::lock_guard lock(_mutex);
    _lost = true;
    _changed.notify_one();
}

bool SendQueue::lost() const {
    const std::lock_guard lock(_mutex);
    return _lost;
}

void SendQueue::dropSpareTexts() {
    const std::lock_guard lock(_mutex);
    std::size_t held = _held;
    for (const std::string& text : _spares) {
        held -= text.capacity();
    }
    _spares.clear();
    hold(held);
}

} // namespace smisd
