#include "server/http/Answer.h"

#include <utility>

#include "server/http/HttpMessage.h"
#include "server/http/ResponseHead.h"

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

HeldAnswer::HeldAnswer(const CimRequest& request, bool keepOpen, std::size_t limit,
                       ResponseChannel& channel)
    : _request(request), _limit(limit), _channel(channel), _keepOpen(keepOpen) {}

void HeldAnswer::add(std::string_view piece) {
    if (_begun) {
        _channel.send(framed(piece));
        return;
    }
    _held.push_back(_channel.piece().append(piece));
    _heldBytes += piece.size();
    if (_heldBytes > _limit) {
        begin();
    }
}

void HeldAnswer::finish() {
    if (!_begun) {
        _held.front().insert(0, answerHead(_request, _heldBytes, _keepOpen));
        for (std::string& piece : _held) {
            _channel.send(std::move(piece));
        }
    } else if (!_request.http10) {
        _channel.send(lastChunk());
    }
}

void HeldAnswer::begin() {
    _begun = true;
    _keepOpen = _keepOpen && !_request.http10;
    _channel.send(_request.http10 ? endlessAnswerHead(_request)
                                  : chunkedAnswerHead(_request, _keepOpen));
    for (std::string& piece : _held) {
        _channel.send(framed(std::exchange(piece, {})));
    }
}

std::string HeldAnswer::framed(std::string_view piece) const {
    return _request.http10 ? _channel.piece().append(piece) : chunk(piece, _channel.piece());
}

} // namespace smisd
