#include "server/dispatch/Request.h"

#include <Pegasus/Common/Exception.h>

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

} // namespace smisd
