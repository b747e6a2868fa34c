// Memory for a handler that has to be posted even when there is none.
#pragma once

#include <array>
#include <cstddef>
#include <new>

namespace smisd {

// Room for one handler at a time, of a size that is known to be enough; what is larger, or a second
// one, is taken from the heap.
class HandlerMemory {
public:
    void* take(std::size_t size) {
        if (_taken || size > _bytes.size()) {
            return ::operator new(size);
        }
        _taken = true;
        return _bytes.data();
    }
    void giveBack(void* memory) {
        if (memory == _bytes.data()) {
            _taken = false;
        } else {
            ::operator delete(memory);
        }
    }

private:
    alignas(std::max_align_t) std::array<std::byte, 256> _bytes;
    bool _taken = false;
};

// An allocator for handlers of Asio.
template<class Type>
struct HandlerAllocator {
    using value_type = Type;

    explicit HandlerAllocator(HandlerMemory& theMemory) : memory(&theMemory) {}
    template<class Other>
    HandlerAllocator(const HandlerAllocator<Other>& other) : memory(other.memory) {}

    Type* allocate(std::size_t count) {
        return static_cast<Type*>(memory->take(count * sizeof(Type)));
    }
    void deallocate(Type* place, std::size_t) { memory->giveBack(place); }

    template<class Other>
    bool operator==(const HandlerAllocator<Other>& other) const {
        return memory == other.memory;
    }

    HandlerMemory* memory;
};

} // namespace smisd
