#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "server/http/CimRequest.h"
#include "server/http/HttpMessage.h"
#include "server/http/WorkerPool.h"

// The room of sent pieces of an answer, for the next ones.

namespace smisd {

// A long answer takes and frees a text for each hundred results. Each time the C library would put
// all its small free blocks in order, for a third of the answer's time. Thread-safe.
class SparePieces {
public:
    // An empty text; with room, if some is spare.
    std::string take() {
        const std::lock_guard lock(_mutex);
        if (_pieces.empty()) {
            return {};
        }
        std::string piece = std::move(_pieces.back());
        _pieces.pop_back();
        return piece;
    }

    void give(std::string piece) {
        piece.clear();
        const std::lock_guard lock(_mutex);
        if (_pieces.size() < most) {
            _pieces.push_back(std::move(piece));
        }
    }

    void clear() {
        const std::lock_guard lock(_mutex);
        _pieces.clear();
    }

private:
    // More are on their way only where the client is slower than the server.
    static constexpr std::size_t most = 4;

    std::mutex _mutex; // guards what follows
    std::vector<std::string> _pieces;
};

// How much of a response waits for its client.

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

// The answer to a client that takes no trailers.

// Collects the pieces of a body, one at least. A body that stays within the limit is sent when it
// is complete, with its length. A longer one is begun when it passes the limit: in chunks, or, over
// HTTP/1.0, up to the end of the connection. From then on an error cannot be reported any more; the
// caller leaves the body without its end.
//
// One thread; all functions but the constructor throw ConnectionLost.
class HeldAnswer {
public:
    HeldAnswer(const CimRequest& request, bool keepOpen, std::size_t limit,
               ResponseChannel& channel);

    void add(std::string_view piece);
    void finish();

    // Whether a part of it was sent.
    bool begun() const { return _begun; }
    // The end of the connection is no end of the body.
    bool keepOpen() const { return _keepOpen; }

private:
    void begin();
    std::string framed(std::string_view piece) const;

    const CimRequest& _request;
    const std::size_t _limit;
    ResponseChannel& _channel;
    bool _keepOpen;
    bool _begun = false;
    std::vector<std::string> _held; // until it is begun; never one text, which would be copied
    std::size_t _heldBytes = 0;
};

} // namespace smisd
