// How much of a response waits for its client.
#pragma once

#include "server/http/WorkerPool.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace smisd {

// Counts the bytes of one connection between the worker that makes them and the I/O thread that
// sends them, so that a worker does not run ahead of its client. Thread-safe.
class Backlog {
public:
    explicit Backlog(std::size_t limit) : _limit(limit) {}

    // In a job of the pool: waits until fewer bytes than the limit are there, then adds some, which
    // may be more than the limit. Throws ConnectionLost when the client is gone or goes meanwhile.
    void add(std::size_t count, WorkerPool& workers);

    // On the I/O thread.
    void sent(std::size_t count);
    void lose();

    bool lost() const;

private:
    bool isFull() const { return !_lost && _count >= _limit; }

    const std::size_t _limit;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _changed;
    std::size_t _count = 0;
    bool _lost = false;
};

} // namespace smisd
