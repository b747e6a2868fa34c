#pragma once

#include <functional>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMOMHandle.h>

namespace scripted {

// A program that links this has a CIMOMHandle::getInstance of its own in place of the library's: it
// logs "CIMOMHandle::getInstance(root/snia, <path>, localOnly false, includeQualifiers true,
// includeClassOrigin false, all)" and answers as the test says here. Handles remember which one was
// assigned to them, and nothing else of it.

// An answer for a path: an instance, or a throw.
using GetInstanceAnswer = std::function<Pegasus::CIMInstance(const Pegasus::CIMObjectPath&)>;

// An empty function restores the first answer: an instance of the path's class, with that path.
void answerGetInstance(const GetInstanceAnswer& answer);

// The context of the last call; null before the first.
const Pegasus::OperationContext* lastGetInstanceContext();

// The handle whose copy the last call was made on; null before the first, and if it was no copy.
const Pegasus::CIMOMHandle* lastGetInstanceHandle();

} // namespace scripted
