#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace array {

// Where threads queue up with requests of which one at a time is worked on, or many at once for
// about the same price: those that come while a batch is worked on make the next one, and the first
// of them works for all.
template<class Request>
class CommitQueue {
public:
    // Returns when the request was in a batch for which some thread has called its `work`, which
    // must not throw. Requests are in a batch in the order in which they came.
    template<class Work>
    void submit(Request& request, Work&& work) {
        std::unique_lock lock(_mutex);
        if (!_next) {
            _next = std::make_shared<Batch>();
        }
        const std::shared_ptr<Batch> batch = _next;
        batch->requests.push_back(&request);
        if (batch->requests.size() > 1) {
            batch->done.wait(lock, [&] { return batch->isDone; });
            return;
        }
        _turnFree.wait(lock, [&] { return !_isTaken; });
        _isTaken = true;
        _next = nullptr;
        lock.unlock();
        work(std::as_const(batch->requests));
        lock.lock();
        _isTaken = false;
        batch->isDone = true;
        lock.unlock();
        // Only those wake who can go on, and first who has the longest way to go.
        _turnFree.notify_one();
        batch->done.notify_all();
    }

private:
    struct Batch {
        std::vector<Request*> requests;
        std::condition_variable done;
        bool isDone = false;
    };

    std::mutex _mutex;
    std::condition_variable _turnFree; // awaited by the first of the next batch
    std::shared_ptr<Batch> _next;      // guarded by _mutex, as is all below and each batch
    bool _isTaken = false;
};

} // namespace array
