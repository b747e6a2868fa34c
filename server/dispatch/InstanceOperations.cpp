// Operations on instances and their properties.
//
// Those on one instance go to the provider of exactly its class. Enumerations go to the providers
// of the requested class and of each of its subclasses, each of which delivers the instances of
// exactly the class that it is asked for. Providers know operations on one property as getInstance
// and modifyInstance.

#include <vector>

#include <Pegasus/Provider/CIMInstanceProvider.h>

#include "server/dispatch/Operations.h"
#include "server/dispatch/Routing.h"
#include "server/module/ProviderManager.h"
#include "server/module/ResponseHandlers.h"
#include "server/operation/TypedValue.h"

using namespace Pegasus;

namespace smisd {
namespace {

const CIMClass& instanceClass(const Request& request, const CIMNamespaceName& nameSpace,
                              const CIMName& className) {
    return requireClass(requireNamespace(request, nameSpace), className, CIM_ERR_INVALID_CLASS);
}

CIMInstanceProvider& providerOf(const Request& request, const CIMNamespaceName& nameSpace,
                                const CIMName& className) {
    instanceClass(request, nameSpace, className);
    return requireInstanceProvider(request, nameSpace, className);
}

std::vector<Participant> participantsOf(const Request& request, const CIMNamespaceName& nameSpace,
                                        const CIMName& className) {
    std::vector<CIMName> classes = requireNamespace(request, nameSpace).subclasses(className, true);
    classes.insert(classes.begin(), className);
    std::vector<Participant> result;
    for (const CIMName& one : classes) {
        if (const String* provider = instanceProviderName(request, nameSpace, one)) {
            result.push_back({one, *provider});
        }
    }
    requireParticipants(result, className);
    return result;
}

CIMPropertyList propertiesOf(const CIMClass& cimClass) {
    Array<CIMName> names;
    for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i) {
        names.append(cimClass.getProperty(i).getName());
    }
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

CIMPropertyList listOf(const CIMName& property) {
    Array<CIMName> names;
    names.append(property);
    return CIMPropertyList(names);
}

// The new value in the declared type of its property.
CIMValue newValueOf(const SetProperty& operation, const Request& request) {
    if (operation.newValue.getType() != CIMTYPE_STRING) {
        return operation.newValue;
    }
    const CIMClass& cimClass =
        instanceClass(request, operation.nameSpace, operation.instanceName.getClassName());
    const Uint32 at = cimClass.findProperty(operation.propertyName);
    if (at == PEG_NOT_FOUND) {
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, String());
    }
    const CIMConstProperty declared = cimClass.getProperty(at);
    return declaredValue(operation.newValue, declared.getType(), declared.isArray());
}

} // namespace

void carryOut(const GetInstance& operation, const Request& request) {
    const CIMName& className = operation.instanceName.getClassName();
    const CIMPropertyList list = providerList(
        operation.propertyList, instanceClass(request, operation.nameSpace, className));
    CIMInstanceProvider& provider =
        requireInstanceProvider(request, operation.nameSpace, className);
    const CIMObjectPath path = providerPath(request, operation.nameSpace, operation.instanceName);
    InstanceHandler handler([&](const CIMInstance& instance) { request.sink.instance(instance); });
    callProvider(handler, [&] {
        provider.getInstance(request.context, path, operation.includeQualifiers,
                             operation.includeClassOrigin, list, handler);
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

void carryOut(const EnumerateInstances& operation, const Request& request) {
    const CIMClass& requested = instanceClass(request, operation.nameSpace, operation.className);
    CIMPropertyList list = operation.propertyList;
    if (!operation.deepInheritance && list.isNull()) {
        list = propertiesOf(requested);
        request.sink.limitProperties(list);
    }
    enumerate(request, operation.nameSpace, operation.className,
              [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
                  const CIMPropertyList wanted = providerList(
                      list, instanceClass(request, operation.nameSpace, path.getClassName()));
                  InstanceListHandler handler(
                      [&](const CIMInstance& instance) { request.sink.namedInstance(instance); });
                  callProvider(handler, [&] {
                      provider.enumerateInstances(request.context, path,
                                                  operation.includeQualifiers,
                                                  operation.includeClassOrigin, wanted, handler);
                  });
              });
}

void carryOut(const EnumerateInstanceNames& operation, const Request& request) {
    instanceClass(request, operation.nameSpace, operation.className);
    enumerate(request, operation.nameSpace, operation.className,
              [&](CIMInstanceProvider& provider, const CIMObjectPath& path) {
                  PathListHandler handler(
                      [&](const CIMObjectPath& name) { request.sink.instanceName(name); });
                  callProvider(handler, [&] {
                      provider.enumerateInstanceNames(request.context, path, handler);
                  });
              });
}

void carryOut(const GetProperty& operation, const Request& request) {
    CIMInstanceProvider& provider = requireInstanceProvider(request, operation.nameSpace,
                                                            operation.instanceName.getClassName());
    const CIMObjectPath path = providerPath(request, operation.nameSpace, operation.instanceName);
    CIMInstance instance(operation.instanceName.getClassName());
    InstanceHandler handler([&](const CIMInstance& delivered) { instance = delivered; });
    callProvider(handler, [&] {
        provider.getInstance(request.context, path, false, false, listOf(operation.propertyName),
                             handler);
    });
    const Uint32 at = instance.findProperty(operation.propertyName);
    if (at == PEG_NOT_FOUND) {
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, operation.propertyName.getString());
    }
    request.sink.returnValue(instance.getProperty(at).getValue());
}

void carryOut(const SetProperty& operation, const Request& request) {
    const CIMValue value = newValueOf(operation, request);
    const CIMName className = operation.instanceName.getClassName();
    CIMInstanceProvider& provider =
        requireInstanceProvider(request, operation.nameSpace, className);
    const CIMObjectPath path = providerPath(request, operation.nameSpace, operation.instanceName);
    CIMInstance instance(className);
    instance.addProperty(CIMProperty(operation.propertyName, value));
    instance.setPath(path);
    PlainHandler handler;
    callProvider(handler, [&] {
        provider.modifyInstance(request.context, path, instance, false,
                                listOf(operation.propertyName), handler);
    });
}

} // namespace smisd
