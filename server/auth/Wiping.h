// Memory that held passwords is wiped before it is free.
#pragma once

#include <cstddef>
#include <memory>
#include <string.h>
#include <string>

namespace smisd {

inline void wipe(std::string& text) {
    text.resize(text.capacity()); // it may have been longer
    explicit_bzero(text.data(), text.size());
    text.clear();
}

// A text that is wiped at its end. Reserve its room: a text that grows leaves a copy behind.
struct WipedText {
    std::string text;

    ~WipedText() { wipe(text); }
};

// As std::allocator.
template<class T>
struct WipingAllocator {
    using value_type = T;

    WipingAllocator() = default;
    template<class Other>
    WipingAllocator(const WipingAllocator<Other>&) {}

    T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }
    void deallocate(T* memory, std::size_t count) {
        explicit_bzero(static_cast<void*>(memory), count * sizeof(T));
        std::allocator<T>().deallocate(memory, count);
    }
    bool operator==(const WipingAllocator&) const { return true; }
};

// A text of a dozen letters or more is wiped, whatever becomes of it.
using WipedString = std::basic_string<char, std::char_traits<char>, WipingAllocator<char>>;

} // namespace smisd
