#include "server/main/FreedMemory.h"

#include <chrono>
#include <malloc.h>

namespace smisd {
namespace {

constexpr int largeBlock = 256 * 1024; // bytes; each is mapped on its own
constexpr int pools = 4;               // each keeps freed blocks for the threads that use it
constexpr std::chrono::milliseconds pause{200};

} // namespace

FreedMemory::FreedMemory() {
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    mallopt(M_ARENA_MAX, pools);
    _thread = std::thread([this] { work(); });
}

FreedMemory::~FreedMemory() {
    {
        const std::lock_guard lock(_mutex);
        _ending = true;
    }
    _changed.notify_one();
    _thread.join();
}

void FreedMemory::giveToSystem() {
    const std::lock_guard lock(_mutex);
    _wanted = true;
    _changed.notify_one();
}

void FreedMemory::work() {
    std::unique_lock lock(_mutex);
    for (;;) {
        _changed.wait(lock, [this] { return _wanted || _ending; });
        if (_ending) {
            return;
        }
        // What has just been given back is being freed, and more may follow.
        _changed.wait_for(lock, pause, [this] { return _ending; });
        _wanted = false;
        lock.unlock();
        malloc_trim(0);
        lock.lock();
    }
}

} // namespace smisd
