#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "array/containers/Shared.h"

namespace array {

// The current one of a succession of values. Readers take it without a lock and never wait for a
// writer, who replaces it whole.
//
// std::atomic<std::shared_ptr> would do, but holds a lock bit while it counts, so a reader that the
// system stops in between makes all others wait. Here a reader notes in a free slot (a hazard slot)
// which value it is about to count, and a value that was replaced is released when no slot names
// it.
template<class T>
class Published {
public:
    explicit Published(Shared<T> first) : _current(first._box.detach()) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;
    ~Published() { const Holder last(_current.load()); }

    // From any thread.
    Shared<T> load() const {
        Slot& slot = claim();
        Box* box = _current.load();
        for (;;) {
            slot.box.store(box);
            Box* const now = _current.load();
            if (now == box) {
                break; // still current after it was noted, so it lives until the note is gone
            }
            box = now;
        }
        Shared<T> counted(Holder::another(box));
        slot.box.store(nullptr);
        return counted;
    }

    // From any thread.
    void store(Shared<T> next) {
        const std::lock_guard lock(_writing);
        _replaced.reserve(_replaced.size() + 1);
        _replaced.emplace_back(_current.exchange(next._box.detach()));
        std::erase_if(_replaced, [this](const Holder& box) { return !isNoted(box.get()); });
    }

private:
    using Box = typename Shared<T>::Box;
    using Holder = CountedPointer<Box>;

    // A cache line of its own, as each is written by another processor.
    struct alignas(64) Slot {
        std::atomic<const void*> box{nullptr};
    };

    // The mark of a slot that is taken but names no value yet.
    static constexpr char taken{};

    // A thread mostly finds the same slot free. Were all taken, it would try again until one of
    // that many threads is done with its few instructions.
    Slot& claim() const {
        static thread_local const std::size_t home =
            std::hash<std::thread::id>()(std::this_thread::get_id());
        for (std::size_t i = home;; ++i) {
            Slot& slot = _slots[i % _slots.size()];
            const void* empty = nullptr;
            if (slot.box.compare_exchange_strong(empty, &taken)) {
                return slot;
            }
        }
    }

    bool isNoted(const Box* box) const {
        for (const Slot& slot : _slots) {
            if (slot.box.load() == box) {
                return true;
            }
        }
        return false;
    }

    mutable std::array<Slot, 64> _slots;
    std::atomic<Box*> _current; // counted as held
    std::mutex _writing;
    std::vector<Holder> _replaced; // guarded by _writing
};

} // namespace array
