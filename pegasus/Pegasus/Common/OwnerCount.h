// How many handles or values own a body. Not a header of OpenPegasus.

#pragma once

#include <atomic>

#include <Pegasus/Common/Config.h>

namespace Pegasus {

// Starts with one. Locked instructions are most of what a short-lived object costs, so they are
// avoided where no other thread can have the object. Threads: owners may come and go at once.
class OwnerCount {
public:
    void add() {
        if (_count.load(std::memory_order_relaxed) != forever) {
            _count.fetch_add(1, std::memory_order_relaxed);
        }
    }

    // Returns whether that was the last owner.
    bool drop() {
        const Uint32 count = _count.load(std::memory_order_acquire);
        return count == 1 ||
               (count != forever && _count.fetch_sub(1, std::memory_order_acq_rel) == 1);
    }

    bool shared() const { return _count.load(std::memory_order_acquire) > 1; }

    // From now on the body is never destroyed and counts as shared. Called by its only owner.
    void keepForever() { _count.store(forever, std::memory_order_relaxed); }

private:
    static constexpr Uint32 forever = Uint32(-1);

    std::atomic<Uint32> _count{1};
};

} // namespace Pegasus
