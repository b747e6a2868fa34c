#include "array/TheArray.h"

#include <atomic>
#include <mutex>

namespace array {

Array& theArray() {
    static std::mutex opening;
    static std::unique_ptr<Array> array; // guarded by opening
    static std::atomic<Array*> opened{nullptr};

    if (Array* const there = opened.load(std::memory_order_acquire))
        return *there;
    const std::lock_guard lock(opening);
    if (!array)
        array = Array::open(stateDirectory());
    opened.store(array.get(), std::memory_order_release);
    return *array;
}

} // namespace array
