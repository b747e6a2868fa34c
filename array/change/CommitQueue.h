#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace array {

// Lets threads share work that costs about the same for one request and for many: the requests that
// come while a batch is being worked on make the next batch, and the thread of its first request
// works for all of them.
template<class Request>
class CommitQueue {
public:
    // Returns when some thread has called its `work` for the batch with this request. `work` must
    // not throw. A batch has its requests in the order in which they came.
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
        // Wake only threads that can go on. The next batch first: its work is yet to be done.
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
