#include "server/http/Backlog.h"

#include "server/http/HttpMessage.h"

namespace smisd {

void Backlog::add(std::size_t count, WorkerPool& workers) {
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

void Backlog::sent(std::size_t count) {
    const std::lock_guard lock(_mutex);
    _count -= count;
    _changed.notify_one();
}

void Backlog::lose() {
    const std::lock_guard lock(_mutex);
    _lost = true;
    _changed.notify_one();
}

bool Backlog::lost() const {
    const std::lock_guard lock(_mutex);
    return _lost;
}

} // namespace smisd
