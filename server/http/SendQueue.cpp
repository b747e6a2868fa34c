#include "server/http/SendQueue.h"

#include <utility>

#include "server/http/HttpMessage.h"

namespace smisd {

void SendQueue::reserve(std::size_t count, WorkerPool& workers) {
    std::unique_lock lock(_mutex);
    if (isFull()) {
        lock.unlock();
        workers.whileWaiting([this] {
            std::unique_lock waiting(_mutex);
            _changed.wait(waiting, [this] { return !isFull(); });
        });
        lock.lock();
    }
    if (_lost) {
        throw ConnectionLost();
    }
    _count += count;
}

std::string SendQueue::spareText() {
    const std::lock_guard lock(_mutex);
    if (_spares.empty()) {
        return {};
    }
    std::string text = std::move(_spares.back());
    _spares.pop_back();
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
    _spares.clear();
}

} // namespace smisd
