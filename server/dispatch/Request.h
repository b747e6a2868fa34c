#pragma once

#include <optional>
#include <vector>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include "server/dispatch/DeclaredInstances.h"
#include "server/dispatch/OpenEnumerations.h"
#include "server/dispatch/Registration.h"
#include "server/module/ProviderHost.h"
#include "server/operation/Dispatcher.h"
#include "server/schema/Schema.h"

// One operation while it is carried out, and what carrying it out needs.

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
    if (!provider) {
        throw Pegasus::CIMException(Pegasus::CIM_ERR_NOT_SUPPORTED,
                                    Pegasus::String("Invalid provider interface."));
    }
    return *provider;
}

// The instance provider of a class.

// Throws CIM_ERR_NOT_SUPPORTED without a text if there is none.
inline Pegasus::CIMInstanceProvider&
requireInstanceProvider(const Request& request, const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMName& className) {
    const Pegasus::String* name = instanceProviderName(request, nameSpace, className);
    if (!name) {
        throw Pegasus::CIMException(Pegasus::CIM_ERR_NOT_SUPPORTED, Pegasus::String());
    }
    return requireInterface<Pegasus::CIMInstanceProvider>(request, *name);
}

// Operations that go to several providers.

// A provider and the class for which it is called.
struct Participant {
    Pegasus::CIMName className;
    Pegasus::String provider;
};

// Throws CIM_ERR_NOT_SUPPORTED with OpenPegasus' text about the requested class if there are none.
void requireParticipants(const std::vector<Participant>& participants,
                         const Pegasus::CIMName& requested);

// Calls `call` with each. An error ends it, but for CIM_ERR_NOT_SUPPORTED: that counts only when
// every participant answers so, and then the first one's is thrown.
template<class Call>
void callEach(const std::vector<Participant>& participants, Call call) {
    std::optional<Pegasus::CIMException> refusal;
    bool answered = false;
    for (const Participant& participant : participants) {
        try {
            call(participant);
            answered = true;
        } catch (const Pegasus::CIMException& error) {
            if (error.getCode() != Pegasus::CIM_ERR_NOT_SUPPORTED) {
                throw;
            }
            if (!refusal) {
                refusal = error;
            }
        }
    }
    if (refusal && !answered) {
        throw *refusal;
    }
}

} // namespace smisd
