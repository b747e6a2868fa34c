// The bytes on their way to one client: a worker makes them, the I/O thread sends them.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "server/http/WorkerPool.h"
#include "server/operation/MemoryBudget.h"

namespace smisd {

// Holds a worker back when its client takes an answer slowly, or there is no memory for more of it.
// The texts that were sent serve again:
// a long answer takes and frees one for each hundred results, and each time the C library would put
// all its small free blocks in order, for a third of the answer's time.
class SendQueue {
public:
    // From `limit` waiting bytes on, a worker waits. `outOfMemory` is called, by the worker and
    // again and again, while there is no memory for more.
    explicit SendQueue(
        std::size_t limit, std::function<void()> outOfMemory = [] {})
        : _limit(limit), _outOfMemory(std::move(outOfMemory)) {}

    // What is on its way is held by `memory` from now on. Nothing is.
    void holdIn(MemoryBudget::Reservation memory);

    // On a worker, in a job of the pool

    // Waits until fewer bytes than the limit are on their way and there is memory for the text,
    // then reserves room for it, though it may be longer than the limit. A short text needs no
    // memory when nothing is on its way: so refusals, and answers of one object, never wait. Throws
    // ConnectionLost when the client is gone or goes meanwhile, or there is no memory for long.
    void reserve(const std::string& text, WorkerPool& workers);

    // On the I/O thread, which must not wait: reserves room for a short text even where there is
    // none.
    void reserveAtOnce(const std::string& text);

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
    bool take(std::size_t held);
    void awaitRoom(std::size_t held);
    void hold(std::size_t held);

    // More are on their way only where the client is slower than the server.
    static constexpr std::size_t mostSpares = 4;

    const std::size_t _limit;
    const std::function<void()> _outOfMemory;

    std::deque<std::string> _texts; // the I/O thread's alone, as the next
    std::size_t _sentOfFirst = 0;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _changed;
    std::size_t _count = 0; // of the bytes that are reserved and not yet sent
    std::size_t _held = 0;  // of memory, by them and the spare texts
    MemoryBudget::Reservation _memory;
    bool _lost = false;
    std::vector<std::string> _spares;
};

} // namespace smisd
