// The room of sent pieces of an answer, for the next ones.
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

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

} // namespace smisd
