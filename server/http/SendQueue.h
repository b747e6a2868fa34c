// The bytes on their way to one client: a worker makes them, the I/O thread sends them.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "server/http/WorkerPool.h"

namespace smisd {

// Holds a worker back when its client takes an answer slowly. The texts that were sent serve again:
// a long answer takes and frees one for each hundred results, and each time the C library would put
// all its small free blocks in order, for a third of the answer's time.
class SendQueue {
public:
    // From `limit` waiting bytes on, a worker waits.
    explicit SendQueue(std::size_t limit) : _limit(limit) {}

    // On a worker, in a job of the pool

    // Waits until fewer bytes than the limit are on their way, then reserves room for `count`,
    // which may be more than the limit. Throws ConnectionLost when the client is gone or goes
    // meanwhile.
    void reserve(std::size_t count, WorkerPool& workers);

    // An empty text; with the room of one that was sent, if there is one.
    std::string spareText();

    // On the I/O thread

    // Bytes for which room was reserved.
    void push(std::string bytes) { _texts.push_back(std::move(bytes)); }

    bool empty() const { return _texts.empty(); }

    // What is to be sent next, `most` bytes at most; valid until sent() is called.
    std::string_view next(std::size_t most) const;

    // So many of the bytes of next() were sent.
    void sent(std::size_t count);

    // The client is gone.
    void lose();
    bool lost() const;

    void dropSpareTexts();

private:
    bool isFull() const { return !_lost && _count >= _limit; }

    // More are on their way only where the client is slower than the server.
    static constexpr std::size_t mostSpares = 4;

    const std::size_t _limit;

    std::deque<std::string> _texts; // the I/O thread's alone, as the next
    std::size_t _sentOfFirst = 0;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _changed;
    std::size_t _count = 0; // of the bytes that are reserved and not yet sent
    bool _lost = false;
    std::vector<std::string> _spares;
};

} // namespace smisd
