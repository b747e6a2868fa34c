// Enumerations: they go to the providers of the requested class and of each of its subclasses, each
// of which delivers the instances of exactly the class that it is asked for.

#include "server/dispatch/FanOut.h"
#include "server/dispatch/Operations.h"
#include "server/module/ProviderErrors.h"
#include "server/module/ResponseHandlers.h"

#include <Pegasus/Provider/CIMInstanceProvider.h>

using namespace Pegasus;

namespace smisd {
namespace {

std::vector<Participant> participantsOf(const Request& request, const CIMNamespaceName& nameSpace,
                                        const CIMName& className) {
    std::vector<CIMName> classes = requireNamespace(request, nameSpace).subclasses(className, true);
    classes.insert(classes.begin(), className);
    std::vector<Participant> result;
    for (const CIMName& one : classes)
        if (const String* provider = instanceProviderName(request, nameSpace, one))
            result.push_back({one, *provider});
    requireParticipants(result, className);
    return result;
}

CIMPropertyList propertiesOf(const CIMClass& cimClass) {
    Array<CIMName> names;
    for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i)
        names.append(cimClass.getProperty(i).getName());
    return CIMPropertyList(names);
}

// Calls `call` with the provider and the path of its class, for each.
template<class Call>
void enumerate(const Request& request, const CIMNamespaceName& nameSpace, const CIMName& className,
               Call call) {
    callEach(participantsOf(request, nameSpace, className), [&](const Participant& participant) {
        call(requireInterface<CIMInstanceProvider>(request, participant.provider),
             CIMObjectPath(request.server.hostName, nameSpace, participant.className));
    });
}

} // namespace

void carryOut(const EnumerateInstances& operation, const Request& request) {
    const CIMClass& requested = requireClass(requireNamespace(request, operation.nameSpace),
                                             operation.className, CIM_ERR_INVALID_CLASS);
    CIMPropertyList list = operation.propertyList;
    if (!operation.deepInheritance && list.isNull()) {
        list = propertiesOf(requested);
        request.sink.limitProperties(list);
    }
    enumerate(request, operation.nameSpace, operation.className,
              [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
                  InstanceListHandler handler(
                      [&](const CIMInstance& instance) { request.sink.namedInstance(instance); });
                  callProvider(handler, [&] {
                      provider.enumerateInstances(request.context, path,
                                                  operation.includeQualifiers,
                                                  operation.includeClassOrigin, list, handler);
                  });
              });
}

void carryOut(const EnumerateInstanceNames& operation, const Request& request) {
    requireClass(requireNamespace(request, operation.nameSpace), operation.className,
                 CIM_ERR_INVALID_CLASS);
    enumerate(request, operation.nameSpace, operation.className,
              [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
                  PathListHandler handler(
                      [&](const CIMObjectPath& name) { request.sink.instanceName(name); });
                  callProvider(handler, [&] {
                      provider.enumerateInstanceNames(request.context, path, handler);
                  });
              });
}

} // namespace smisd
