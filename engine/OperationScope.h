#pragma once

#include "engine/Export.h"

// What an engine may define to learn where an operation of a provider begins and ends, so that all
// that the operation reads can be of one moment. An engine that doesn't works as well: each of its
// calls stands for itself then.
//
// Both are called on the thread that runs the operation, once each. An operation may call back into
// the server, which may run another one on the same thread: that one ends before the outer does.
extern "C" {
DRAV_EXPORT __attribute__((weak)) void DRAVBeginOperation() noexcept;
DRAV_EXPORT __attribute__((weak)) void DRAVEndOperation() noexcept;
}

namespace Pegasus {

// Tells the engine that an operation goes on: stands first in each operation of a provider that
// reads or changes anything, on the stack of the thread that runs it, and ends with it, however it
// ends.
class OperationScope {
public:
    OperationScope() {
        if (DRAVBeginOperation) {
            DRAVBeginOperation();
        }
    }
    ~OperationScope() {
        if (DRAVEndOperation) {
            DRAVEndOperation();
        }
    }
    OperationScope(const OperationScope&) = delete;
    OperationScope& operator=(const OperationScope&) = delete;
};

} // namespace Pegasus
