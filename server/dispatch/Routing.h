// Which providers an operation goes to.
#pragma once

#include <optional>
#include <vector>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include "server/dispatch/Request.h"

namespace smisd {

// The name of the provider for instances of exactly this class, or null: the one that is
// registered, or else, for a class of which the MOF has instances, DeclaredInstances::name.
const Pegasus::String* instanceProviderName(const Request& request,
                                            const Pegasus::CIMNamespaceName& nameSpace,
                                            const Pegasus::CIMName& className);

// The provider of this name, made if need be.
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

// The instance provider of exactly this class. Throws CIM_ERR_NOT_SUPPORTED without a text if there
// is none.
Pegasus::CIMInstanceProvider& requireInstanceProvider(const Request& request,
                                                      const Pegasus::CIMNamespaceName& nameSpace,
                                                      const Pegasus::CIMName& className);

// Operations that go to several providers

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
