#include "server/dispatch/Routing.h"

using namespace Pegasus;

namespace smisd {

const String* instanceProviderName(const Request& request, const CIMNamespaceName& nameSpace,
                                   const CIMName& className) {
    const String* registered =
        request.server.registration.find(nameSpace, className, ProviderType::instance);
    if (registered || !request.server.declared.has(nameSpace, className)) {
        return registered;
    }
    return &DeclaredInstances::name();
}

CIMProvider& providerNamed(const Request& request, const String& name) {
    if (name == DeclaredInstances::name()) {
        return request.server.declared;
    }
    return request.server.providers.provider(name);
}

CIMInstanceProvider& requireInstanceProvider(const Request& request,
                                             const CIMNamespaceName& nameSpace,
                                             const CIMName& className) {
    const String* name = instanceProviderName(request, nameSpace, className);
    if (!name) {
        throw CIMException(CIM_ERR_NOT_SUPPORTED, String());
    }
    return requireInterface<CIMInstanceProvider>(request, *name);
}

void requireParticipants(const std::vector<Participant>& participants, const CIMName& requested) {
    if (participants.empty()) {
        throw CIMException(CIM_ERR_NOT_SUPPORTED,
                           String("No provider or repository defined for class ") +
                               requested.getString() + String("."));
    }
}

} // namespace smisd
