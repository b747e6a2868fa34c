#pragma once

#include <atomic>

#include <Pegasus/Common/String.h>

#include "engine/Export.h"

// What an engine may define whose names can change: the name behind one of DRAVEngine's name
// pointers, as the operation that runs on the calling thread is to see it
// (engine/OperationScope.h). Never null; the name is the engine's, never changes and lives as long
// as the process. From any thread.
extern "C" DRAV_EXPORT __attribute__((weak)) const Pegasus::String*
DRAVCurrentName(const Pegasus::String*& pointer) noexcept;

namespace Pegasus {

// The name behind one of DRAVEngine's name pointers. From any thread, also while the engine lets
// the pointer point to another name; the name itself never changes and is the engine's.
inline const String& currentName(const String*& pointer) {
    return DRAVCurrentName ? *DRAVCurrentName(pointer)
                           : *std::atomic_ref(pointer).load(std::memory_order_acquire);
}

} // namespace Pegasus
