#include "server/dispatch/Request.h"

#include <algorithm>
#include <vector>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/PropertyListAccess.h>

using namespace Pegasus;

namespace smisd {
namespace {

CIMPropertyList namesAt(std::vector<Uint32> places, const CIMPropertyList& list) {
    std::sort(places.begin(), places.end());
    Array<CIMName> names;
    for (const Uint32 place : places) {
        names.append(list[place]);
    }
    return CIMPropertyList(names);
}

} // namespace

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

CIMPropertyList providerList(const CIMPropertyList& list, const CIMClass& cimClass) {
    if (list.size() <= cimClass.getPropertyCount()) {
        return list;
    }
    std::vector<Uint32> places;
    for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i) {
        PropertyListAccess::eachPlace(list, cimClass.getProperty(i).getName(),
                                      [&](Uint32 place) { places.push_back(place); });
    }
    return namesAt(std::move(places), list);
}

CIMPropertyList providerList(const CIMPropertyList& list, const Schema& schema) {
    if (list.size() <= schema.propertyNames().size()) {
        return list;
    }
    std::vector<Uint32> places;
    for (const CIMName& name : schema.propertyNames()) {
        PropertyListAccess::eachPlace(list, name, [&](Uint32 place) { places.push_back(place); });
    }
    return namesAt(std::move(places), list);
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
