// Operations on one instance: they go to the provider of exactly its class.

#include "server/dispatch/InstanceProvider.h"
#include "server/dispatch/Operations.h"
#include "server/module/ProviderErrors.h"
#include "server/module/ResponseHandlers.h"

using namespace Pegasus;

namespace smisd {
namespace {

CIMInstanceProvider& providerOf(const Request& request, const CIMNamespaceName& nameSpace,
                                const CIMName& className) {
    requireClass(requireNamespace(request, nameSpace), className, CIM_ERR_INVALID_CLASS);
    return requireInstanceProvider(request, nameSpace, className);
}

} // namespace

void carryOut(const GetInstance& operation, const Request& request) {
    CIMInstanceProvider& provider =
        providerOf(request, operation.nameSpace, operation.instanceName.getClassName());
    const CIMObjectPath path = providerPath(request, operation.nameSpace, operation.instanceName);
    InstanceHandler handler([&](const CIMInstance& instance) { request.sink.instance(instance); });
    callProvider(handler, [&] {
        provider.getInstance(request.context, path, operation.includeQualifiers,
                             operation.includeClassOrigin, operation.propertyList, handler);
    });
}

void carryOut(const ModifyInstance& operation, const Request& request) {
    const CIMInstance& instance = operation.modifiedInstance;
    CIMInstanceProvider& provider =
        providerOf(request, operation.nameSpace, instance.getClassName());
    const CIMObjectPath path = providerPath(request, operation.nameSpace, instance.getPath());
    PlainHandler handler;
    callProvider(handler, [&] {
        provider.modifyInstance(request.context, path, instance, operation.includeQualifiers,
                                operation.propertyList, handler);
    });
}

void carryOut(const CreateInstance& operation, const Request& request) {
    const CIMInstance& instance = operation.newInstance;
    CIMInstanceProvider& provider =
        providerOf(request, operation.nameSpace, instance.getClassName());
    const CIMObjectPath path(request.server.hostName, operation.nameSpace, instance.getClassName());
    PathHandler handler([&](const CIMObjectPath& made) { request.sink.instanceName(made); });
    callProvider(handler,
                 [&] { provider.createInstance(request.context, path, instance, handler); });
}

void carryOut(const DeleteInstance& operation, const Request& request) {
    CIMInstanceProvider& provider =
        providerOf(request, operation.nameSpace, operation.instanceName.getClassName());
    const CIMObjectPath path = providerPath(request, operation.nameSpace, operation.instanceName);
    PlainHandler handler;
    callProvider(handler, [&] { provider.deleteInstance(request.context, path, handler); });
}

} // namespace smisd
