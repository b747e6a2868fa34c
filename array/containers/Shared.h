#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace array {

// A shared, counted pointer to a value that nobody changes any more: std::shared_ptr<const T> in
// one word, with the count beside the value. Copies may be made and dropped by any thread; one
// Shared object is used by one thread at a time.
template<class T>
class Shared {
public:
    Shared() = default;
    Shared(const Shared& other) : _box(other._box) { retain(_box); }
    Shared(Shared&& other) noexcept : _box(std::exchange(other._box, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(_box, other._box);
        return *this;
    }
    ~Shared() { release(_box); }

    template<class... Arguments>
    static Shared make(Arguments&&... arguments) {
        return Shared(new Box(std::forward<Arguments>(arguments)...));
    }

    explicit operator bool() const { return _box != nullptr; }
    const T& operator*() const { return _box->value; }
    const T* operator->() const { return &_box->value; }
    const T* get() const { return _box ? &_box->value : nullptr; }

private:
    template<class>
    friend class Published;

    struct Box {
        template<class... Arguments>
        explicit Box(Arguments&&... arguments) : value{std::forward<Arguments>(arguments)...} {}

        std::atomic<std::uint32_t> uses{1};
        const T value;
    };

    explicit Shared(Box* box) : _box(box) {}

    static void retain(Box* box) {
        if (box) {
            box->uses.fetch_add(1, std::memory_order_relaxed);
        }
    }
    static void release(Box* box) {
        if (box && box->uses.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete box;
        }
    }

    Box* _box = nullptr;
};

} // namespace array
