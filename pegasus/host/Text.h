// UTF-8 text that grows at its end, piece by short piece.
//
// Threads: a Text belongs to one.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace Pegasus {

// Documents are made of hundreds of literals a few bytes long: `append` is inlined always, so that
// each of them becomes a comparison and a few moves. Throws nothing but std::bad_alloc.
class Text {
public:
    std::string_view view() const { return {_bytes.get(), _size}; }
    std::size_t size() const { return _size; }
    bool empty() const { return _size == 0; }

    void clear() { _size = 0; } // keeps the room
    void cut(std::size_t size) { _size = size; }

    [[gnu::always_inline]] Text& append(std::string_view piece) {
        if (!piece.empty()) {
            std::memcpy(room(piece.size()), piece.data(), piece.size());
            _size += piece.size();
        }
        return *this;
    }
    [[gnu::always_inline]] Text& operator+=(std::string_view piece) { return append(piece); }
    Text& operator+=(char c) {
        *room(1) = c;
        ++_size;
        return *this;
    }

    // Where so many bytes may be written; `added` then says how many were. Ends with the next call.
    char* room(std::size_t count) {
        if (_capacity - _size < count) {
            _grow(count);
        }
        return _bytes.get() + _size;
    }
    void added(std::size_t count) { _size += count; }

private:
    void _grow(std::size_t count) {
        const std::size_t smallest = 256,
                          capacity = std::max(2 * _capacity + smallest, _size + count);
        auto bytes = std::make_unique_for_overwrite<char[]>(capacity);
        if (_size != 0) {
            std::memcpy(bytes.get(), _bytes.get(), _size);
        }
        _bytes = std::move(bytes);
        _capacity = capacity;
    }

    std::unique_ptr<char[]> _bytes;
    std::size_t _size = 0;
    std::size_t _capacity = 0;
};

} // namespace Pegasus
