#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace array {

// A pointer to an object that counts in its member `holders` who points to it, and that the last
// of them destroys with T::destroy. Copies may be made and dropped by any thread; one pointer is
// used by one thread at a time.
template<class T>
class CountedPointer {
public:
    CountedPointer() = default;
    // Takes over a count: an object is made with one.
    explicit CountedPointer(T* object) : _object(object) {}
    // One more, to an object that somebody else's pointer keeps.
    static CountedPointer another(T* object) {
        object->holders.fetch_add(1, std::memory_order_relaxed);
        return CountedPointer(object);
    }
    CountedPointer(const CountedPointer& other) : _object(other._object) {
        if (_object) {
            _object->holders.fetch_add(1, std::memory_order_relaxed);
        }
    }
    CountedPointer(CountedPointer&& other) noexcept : _object(other.detach()) {}
    CountedPointer& operator=(CountedPointer other) noexcept {
        std::swap(_object, other._object);
        return *this;
    }
    ~CountedPointer() {
        if (_object && _object->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            T::destroy(_object);
        }
    }

    explicit operator bool() const { return _object != nullptr; }
    T* get() const { return _object; }
    // The analyzer does not follow the count, and takes the object for one that is gone.
    T* operator->() const { return _object; } // NOLINT(clang-analyzer-cplusplus.NewDelete)

    // True if nobody else points to the object, so that it may be changed in place.
    bool unique() const { return _object->holders.load(std::memory_order_acquire) == 1; }

    // Lets go of the object without giving up the count, which is the caller's then.
    T* detach() { return std::exchange(_object, nullptr); }

private:
    T* _object = nullptr;
};

// A shared, counted pointer to a value that nobody changes any more: std::shared_ptr<const T> in
// one word, with the count beside the value. Threads may share it as they may a CountedPointer.
template<class T>
class Shared {
public:
    Shared() = default;

    template<class... Arguments>
    static Shared make(Arguments&&... arguments) {
        return Shared(CountedPointer<Box>(new Box(std::forward<Arguments>(arguments)...)));
    }

    explicit operator bool() const { return static_cast<bool>(_box); }
    const T& operator*() const { return _box->value; }
    const T* operator->() const { return &_box->value; }
    const T* get() const { return _box ? &_box->value : nullptr; }

private:
    template<class>
    friend class Published;

    struct Box {
        template<class... Arguments>
        explicit Box(Arguments&&... arguments) : value{std::forward<Arguments>(arguments)...} {}
        static void destroy(Box* box) { delete box; }

        std::atomic<std::uint32_t> holders{1};
        const T value;
    };

    explicit Shared(CountedPointer<Box> box) : _box(std::move(box)) {}

    CountedPointer<Box> _box;
};

} // namespace array
