#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Common/String.h>

#include "providers/frame/Events.h"
#include "providers/frame/Trace.h"

// The operations that a provider refuses, as rows of its class:
//
//     REFUSE(createInstance, "SharedSecret::createInstance");
//
// A row overrides the operation. It throws CIMNotSupportedException with the row's text and leaves
// the response handler untouched.

#define REFUSE(operation, text)                                                                    \
    void operation(REFUSED_##operation()) override {                                               \
        refuse(text);                                                                              \
    }

// First writes a line to standard output.
#define REFUSE_WITH_LINE(operation, text, line)                                                    \
    void operation(REFUSED_##operation()) override {                                               \
        trace(line);                                                                               \
        refuse(text);                                                                              \
    }

// First publishes that the operation is not implemented, from this line of the service's source.
#define REFUSE_WITH_EVENT(operation, service, line)                                                \
    void operation(REFUSED_##operation(path)) override {                                           \
        publishUnimplemented(service, #operation, line, path);                                     \
        refuse(service "::" #operation);                                                           \
    }

// What each operation is given; a refusal looks at the path, if at anything.
#define REFUSED_getInstance(path)                                                                  \
    const OperationContext &, const CIMObjectPath &path, const Boolean, const Boolean,             \
        const CIMPropertyList &, InstanceResponseHandler &
#define REFUSED_enumerateInstances(path)                                                           \
    const OperationContext &, const CIMObjectPath &path, const Boolean, const Boolean,             \
        const CIMPropertyList &, InstanceResponseHandler &
#define REFUSED_enumerateInstanceNames(path)                                                       \
    const OperationContext &, const CIMObjectPath &path, ObjectPathResponseHandler &
#define REFUSED_modifyInstance(path)                                                               \
    const OperationContext &, const CIMObjectPath &path, const CIMInstance &, const Boolean,       \
        const CIMPropertyList &, ResponseHandler &
#define REFUSED_createInstance(path)                                                               \
    const OperationContext &, const CIMObjectPath &path, const CIMInstance &,                      \
        ObjectPathResponseHandler &
#define REFUSED_deleteInstance(path)                                                               \
    const OperationContext &, const CIMObjectPath &path, ResponseHandler &
#define REFUSED_references(path)                                                                   \
    const OperationContext &, const CIMObjectPath &path, const CIMName &, const String &,          \
        const Boolean, const Boolean, const CIMPropertyList &, ObjectResponseHandler &
#define REFUSED_referenceNames(path)                                                               \
    const OperationContext &, const CIMObjectPath &path, const CIMName &, const String &,          \
        ObjectPathResponseHandler &

namespace Pegasus {

// Throws CIMNotSupportedException with this text.
[[noreturn]] void refuse(const char* text);

} // namespace Pegasus
