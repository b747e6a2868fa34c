// One operation while it is carried out, and what carrying it out needs.
#pragma once

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/String.h>

#include "server/dispatch/DeclaredInstances.h"
#include "server/dispatch/OpenEnumerations.h"
#include "server/dispatch/Registration.h"
#include "server/module/ProviderManager.h"
#include "server/operation/Dispatcher.h"
#include "server/schema/Schema.h"

namespace smisd {

// What all requests share; free for any thread.
struct Environment {
    const Repository& repository;
    const Registration& registration;
    ProviderManager& providers;
    OpenEnumerations& enumerations;
    DeclaredInstances& declared;
    const Pegasus::String hostName; // of the paths that providers receive
};

struct Request {
    const Environment& server;
    const Pegasus::OperationContext context; // for providers
    const Pegasus::String userName;
    ResultSink& sink;
    const std::size_t operationBytes = 0; // of memory
};

// Throws CIM_ERR_INVALID_NAMESPACE if there is no such namespace.
const Schema& requireNamespace(const Request& request, const Pegasus::CIMNamespaceName& nameSpace);

// Throws an error with this code and the name as its text if the class is not declared.
const Pegasus::CIMClass& requireClass(const Schema& schema, const Pegasus::CIMName& className,
                                      Pegasus::CIMStatusCode code);

// The path as a provider receives it: with the server's host name and the request's namespace.
Pegasus::CIMObjectPath providerPath(const Request& request,
                                    const Pegasus::CIMNamespaceName& nameSpace,
                                    const Pegasus::CIMObjectPath& path);

// A property list as a provider receives it, who may search it for each property of each instance:
// of one that is longer than what the class has, or all classes of the namespace have, only what
// they have is left, in its order.
Pegasus::CIMPropertyList providerList(const Pegasus::CIMPropertyList& list,
                                      const Pegasus::CIMClass& cimClass);
Pegasus::CIMPropertyList providerList(const Pegasus::CIMPropertyList& list, const Schema& schema);

// A delivered path with the host and the namespace that the provider has left out.
Pegasus::CIMObjectPath completePath(const Pegasus::CIMObjectPath& path,
                                    const Pegasus::String& hostName,
                                    const Pegasus::CIMNamespaceName& nameSpace);

} // namespace smisd
