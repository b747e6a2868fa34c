// What an operation is about, for those who judge and count operations without carrying them out.
#pragma once

#include "server/operation/Operation.h"

namespace smisd {

enum class OperationKind {
    read,   // instances, or properties of them
    change, // of instances; every extrinsic method counts as one
    schema, // reads declarations
};

// The name as DMTF DSP0200 gives it; "InvokeMethod" for an extrinsic method.
const char* nameOf(const Operation& operation);

OperationKind kindOf(const Operation& operation);

// The object that it addresses, with the operation's namespace: an instance, or a class alone.
// Without a class name for one on a whole namespace.
Pegasus::CIMObjectPath objectOf(const Operation& operation);

} // namespace smisd
