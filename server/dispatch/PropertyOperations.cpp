// Operations on one property: providers know them as getInstance and modifyInstance.

#include "server/dispatch/DeclaredValue.h"
#include "server/dispatch/InstanceProvider.h"
#include "server/dispatch/Operations.h"
#include "server/module/ProviderErrors.h"
#include "server/module/ResponseHandlers.h"

using namespace Pegasus;

namespace smisd {
namespace {

CIMPropertyList listOf(const CIMName& property) {
    Array<CIMName> names;
    names.append(property);
    return CIMPropertyList(names);
}

// The new value in the declared type of its property.
CIMValue newValueOf(const SetProperty& operation, const Request& request) {
    if (operation.newValue.getType() != CIMTYPE_STRING)
        return operation.newValue;
    const CIMClass& cimClass =
        requireClass(requireNamespace(request, operation.nameSpace),
                     operation.instanceName.getClassName(), CIM_ERR_INVALID_CLASS);
    const Uint32 at = cimClass.findProperty(operation.propertyName);
    if (at == PEG_NOT_FOUND)
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, String());
    const CIMConstProperty declared = cimClass.getProperty(at);
    return declaredValue(operation.newValue, declared.getType(), declared.isArray());
}

} // namespace

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
    if (at == PEG_NOT_FOUND)
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, operation.propertyName.getString());
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
