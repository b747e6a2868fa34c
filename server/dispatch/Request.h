// One operation while it is carried out, and what carrying it out needs.
#pragma once

#include "server/dispatch/DeclaredInstances.h"
#include "server/dispatch/Registration.h"
#include "server/module/ProviderHost.h"
#include "server/operation/ResultSink.h"
#include "server/pull/OpenEnumerations.h"
#include "server/schema/Repository.h"

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/String.h>

namespace smisd {

// What all requests share; free for any thread.
struct Environment {
    const Repository& repository;
    const Registration& registration;
    ProviderHost& providers;
    OpenEnumerations& enumerations;
    DeclaredInstances& declared;
    const Pegasus::String hostName; // of the paths that providers receive
};

struct Request {
    const Environment& server;
    const Pegasus::OperationContext context; // for providers
    const Pegasus::String userName;
    ResultSink& sink;
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

// A delivered path with the host and the namespace that the provider has left out.
Pegasus::CIMObjectPath completePath(const Pegasus::CIMObjectPath& path,
                                    const Pegasus::String& hostName,
                                    const Pegasus::CIMNamespaceName& nameSpace);

// The name of the provider for instances of exactly this class, or null: the one that is
// registered, or else, for a class of which the MOF has instances, DeclaredInstances::name.
const Pegasus::String* instanceProviderName(const Request& request,
                                            const Pegasus::CIMNamespaceName& nameSpace,
                                            const Pegasus::CIMName& className);

Pegasus::CIMProvider& providerNamed(const Request& request, const Pegasus::String& name);

// The provider, made if need be, as the interface that it is registered for. Throws
// CIM_ERR_NOT_SUPPORTED if it does not have that interface.
template<class Interface>
Interface& requireInterface(const Request& request, const Pegasus::String& providerName) {
    auto* provider = dynamic_cast<Interface*>(&providerNamed(request, providerName));
    if (!provider)
        throw Pegasus::CIMException(Pegasus::CIM_ERR_NOT_SUPPORTED,
                                    Pegasus::String("Invalid provider interface."));
    return *provider;
}

} // namespace smisd
