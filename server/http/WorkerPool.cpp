#include "server/http/WorkerPool.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace smisd {
namespace {

// More jobs than processors make nothing faster, and keep others waiting for a processor.
unsigned mostOfOne(unsigned workers) {
    static const unsigned processors = std::max(2U, std::thread::hardware_concurrency());
    return std::min((workers + 1) / 2, processors);
}

// The user whose job this thread runs.
thread_local const std::string* currentUser = nullptr;

} // namespace

WorkerPool::WorkerPool(unsigned workers) : _workers(workers) {}

WorkerPool::~WorkerPool() {
    join();
}

void WorkerPool::post(Job job, const std::string& user) {
    {
        const std::lock_guard lock(_mutex);
        const auto share = _shares.try_emplace(user).first;
        share->second.most = user.empty() ? _workers : mostOfOne(_workers);
        try {
            enqueue(share, std::move(job));
        } catch (...) {
            forgetIfUnused(share);
            throw;
        }
    }
    _jobPosted.notify_one(); // without the lock, which the thread that wakes needs
}

// All of it, or nothing when it throws.
void WorkerPool::enqueue(Shares::iterator share, Job job) {
    std::list<Shares::iterator> turn{share};
    std::deque<Job>& jobs = share->second.jobs;
    jobs.push_back(std::move(job));
    if (jobs.size() == 1) {
        _turns.splice(_turns.end(), turn);
    }
    try {
        startThreadIfNeeded();
    } catch (...) {
        jobs.pop_back();
        if (jobs.empty()) {
            _turns.remove(share);
        }
        throw;
    }
}

bool WorkerPool::hasRoom(const Share& share) const {
    return _running < _workers && share.running < share.most;
}

// Workers that jobs will take which have waited.
unsigned WorkerPool::awaited() const {
    unsigned sum = 0;
    for (const auto& [user, share] : _shares) {
        sum += std::min(share.returning, share.most - share.running);
    }
    return sum;
}

// Whose job is to begin next; end() when none can.
WorkerPool::Shares::iterator WorkerPool::next() {
    if (_turns.empty() || _running + awaited() >= _workers) {
        return _shares.end();
    }
    const auto turn = std::find_if(_turns.begin(), _turns.end(), [](const auto& one) {
        return one->second.running + one->second.returning < one->second.most;
    });
    return turn == _turns.end() ? _shares.end() : *turn;
}

// A job that could run has a thread that will take it.
void WorkerPool::startThreadIfNeeded() {
    if (_idle == 0 && next() != _shares.end()) {
        try {
            _threads.emplace_back([this] { work(); });
            ++_idle;
        } catch (const std::exception&) { // no memory, or too many threads
            if (_threads.empty()) {
                throw;
            }
            // The threads that there are will come to it.
        }
    }
}

void WorkerPool::wakeForNextJob() {
    if (next() != _shares.end()) {
        _jobPosted.notify_one();
    }
}

unsigned WorkerPool::running() const {
    const std::lock_guard lock(_mutex);
    return _running;
}

void WorkerPool::begin(Share& share) {
    ++share.running;
    ++_running;
}

void WorkerPool::end(Share& share) {
    --share.running;
    --_running;
    wakeReturning();
}

// One job of each user who has room for it.
void WorkerPool::wakeReturning() {
    for (auto& [user, share] : _shares) {
        if (share.returning > 0 && hasRoom(share)) {
            share.mayReturn.notify_one();
        }
    }
}

void WorkerPool::forgetIfUnused(Shares::iterator share) {
    const Share& one = share->second;
    if (one.jobs.empty() && one.running + one.waiting + one.returning == 0) {
        _shares.erase(share);
    }
}

void WorkerPool::work() {
    std::unique_lock lock(_mutex);
    for (;;) {
        _jobPosted.wait(lock,
                        [this] { return next() != _shares.end() || (_turns.empty() && _ending); });
        if (_turns.empty()) {
            // A thread that looked while jobs were queued has gone to sleep again.
            _jobPosted.notify_all();
            return;
        }
        const Shares::iterator share = next();
        Job job = std::move(share->second.jobs.front());
        share->second.jobs.pop_front();
        const auto turn = std::find(_turns.begin(), _turns.end(), share);
        if (share->second.jobs.empty()) {
            _turns.erase(turn);
        } else {
            _turns.splice(_turns.end(), _turns, turn);
        }
        --_idle;
        begin(share->second);
        startThreadIfNeeded();
        wakeForNextJob();
        lock.unlock();
        currentUser = &share->first;
        job();
        job = nullptr;
        lock.lock();
        ++_idle;
        end(share->second);
        forgetIfUnused(share);
        // If no job wants to go on, this thread takes the next one.
    }
}

void WorkerPool::whileWaiting(const std::function<void()>& wait) {
    thread_local bool isWaiting = false;
    if (isWaiting) {
        return wait();
    }
    isWaiting = true;
    const std::string& user = *currentUser;
    {
        const std::lock_guard lock(_mutex);
        Share& share = _shares.at(user);
        ++share.waiting;
        end(share);
        startThreadIfNeeded();
        wakeForNextJob();
    }
    std::exception_ptr thrown;
    try {
        wait();
    } catch (...) {
        thrown = std::current_exception();
    }
    isWaiting = false;
    std::unique_lock lock(_mutex);
    Share& share = _shares.at(user);
    --share.waiting;
    ++share.returning;
    share.mayReturn.wait(lock, [&] { return hasRoom(share); });
    --share.returning;
    begin(share);
    wakeReturning();
    wakeForNextJob();
    if (thrown) {
        std::rethrow_exception(thrown);
    }
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
