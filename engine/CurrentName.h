#pragma once

#include <atomic>

#include <Pegasus/Common/String.h>

namespace Pegasus {

// What one of DRAVEngine's name pointers points to now. From any thread, also while the engine lets
// the pointer point to another name; the name itself never changes and is the engine's.
inline const String& currentName(const String*& pointer) {
    return *std::atomic_ref<const String*>(pointer).load(std::memory_order_acquire);
}

} // namespace Pegasus
