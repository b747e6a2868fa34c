#include "server/http/WorkerPool.h"

#include <system_error>
#include <utility>

namespace smisd {

WorkerPool::WorkerPool(unsigned workers) : _workers(workers) {}

WorkerPool::~WorkerPool() {
    join();
}

void WorkerPool::post(Job job) {
    {
        const std::lock_guard lock(_mutex);
        _jobs.push_back(std::move(job));
        startThreadIfNeeded();
    }
    _jobPosted.notify_one(); // without the lock, which the thread that wakes needs
}

// A job that could run has a thread that will take it.
void WorkerPool::startThreadIfNeeded() {
    if (!_jobs.empty() && _idle == 0 && _running < _workers) {
        try {
            _threads.emplace_back([this] { work(); });
            ++_idle;
        } catch (const std::system_error&) {
            if (_threads.empty()) {
                throw;
            }
            // The threads that there are will come to it.
        }
    }
}

bool WorkerPool::canBegin() const {
    return !_jobs.empty() && _running < _workers && _returning == 0;
}

void WorkerPool::wakeForNextJob() {
    if (canBegin()) {
        _jobPosted.notify_one();
    }
}

unsigned WorkerPool::running() const {
    const std::lock_guard lock(_mutex);
    return _running;
}

void WorkerPool::work() {
    std::unique_lock lock(_mutex);
    for (;;) {
        _jobPosted.wait(lock, [this] { return canBegin() || (_jobs.empty() && _ending); });
        if (_jobs.empty()) {
            // A thread that looked while jobs were queued has gone to sleep again.
            _jobPosted.notify_all();
            return;
        }
        Job job = std::move(_jobs.front());
        _jobs.pop_front();
        --_idle;
        ++_running;
        startThreadIfNeeded();
        wakeForNextJob();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
        --_running;
        ++_idle;
        _workerFree.notify_one(); // if no job wants to go on, this thread takes the next one
    }
}

void WorkerPool::whileWaiting(const std::function<void()>& wait) {
    {
        const std::lock_guard lock(_mutex);
        --_running;
        startThreadIfNeeded();
        _workerFree.notify_one();
        wakeForNextJob();
    }
    wait();
    std::unique_lock lock(_mutex);
    ++_returning;
    _workerFree.wait(lock, [this] { return _running < _workers; });
    --_returning;
    ++_running;
    if (_running < _workers) {
        _workerFree.notify_one();
    }
    wakeForNextJob();
}

void WorkerPool::join() {
    std::vector<std::thread> threads;
    for (;;) {
        {
            const std::lock_guard lock(_mutex);
            _ending = true;
            threads = std::exchange(_threads, {});
        }
        if (threads.empty()) {
            return;
        }
        _jobPosted.notify_all();
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
}

} // namespace smisd
