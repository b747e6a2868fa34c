#include "server/dispatch/Request.h"

using namespace Pegasus;

namespace smisd {

const Schema& requireNamespace(const Request& request, const CIMNamespaceName& nameSpace) {
    const Schema* schema = request.server.repository.find(nameSpace);
    if (!schema) {
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, nameSpace.getString());
    }
    return *schema;
}

const CIMClass& requireClass(const Schema& schema, const CIMName& className, CIMStatusCode code) {
    const CIMClass* found = schema.findClass(className);
    if (!found) {
        throw CIMException(code, className.getString());
    }
    return *found;
}

CIMObjectPath providerPath(const Request& request, const CIMNamespaceName& nameSpace,
                           const CIMObjectPath& path) {
    return CIMObjectPath(request.server.hostName, nameSpace, path.getClassName(),
                         path.getKeyBindings());
}

CIMObjectPath completePath(const CIMObjectPath& path, const String& hostName,
                           const CIMNamespaceName& nameSpace) {
    CIMObjectPath result = path;
    if (path.getHost().size() == 0) {
        result.setHost(hostName);
    }
    if (path.getNameSpace().isNull()) {
        result.setNameSpace(nameSpace);
    }
    return result;
}

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

} // namespace smisd

using namespace Pegasus;

namespace smisd {

void requireParticipants(const std::vector<Participant>& participants, const CIMName& requested) {
    if (participants.empty()) {
        throw CIMException(CIM_ERR_NOT_SUPPORTED,
                           String("No provider or repository defined for class ") +
                               requested.getString() + String("."));
    }
}

} // namespace smisd
