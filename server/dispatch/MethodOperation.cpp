// Extrinsic methods: they go to the method provider of exactly the object's class, also when the
// class does not declare the method.

#include <Pegasus/Provider/CIMMethodProvider.h>

#include "server/dispatch/Operations.h"
#include "server/dispatch/Routing.h"
#include "server/module/ProviderManager.h"
#include "server/module/ResponseHandlers.h"
#include "server/operation/TypedValue.h"

using namespace Pegasus;

namespace smisd {
namespace {

const CIMClass& classOf(const InvokeMethod& operation, const Request& request) {
    return requireClass(requireNamespace(request, operation.nameSpace),
                        operation.objectName.getClassName(), CIM_ERR_NOT_FOUND);
}

CIMConstMethod declarationOf(const InvokeMethod& operation, const Request& request) {
    const CIMClass& cimClass = classOf(operation, request);
    const Uint32 at = cimClass.findMethod(operation.methodName);
    if (at == PEG_NOT_FOUND) {
        throw CIMException(CIM_ERR_METHOD_NOT_FOUND, String());
    }
    return cimClass.getMethod(at);
}

CIMName nameOf(const CIMParamValue& parameter) {
    try {
        return CIMName(parameter.getParameterName());
    } catch (const InvalidNameException& error) {
        throw CIMException(CIM_ERR_FAILED, error.getMessage());
    }
}

// The parameter in its declared type; unchanged if the method declares none of the name.
CIMParamValue typed(const CIMParamValue& parameter, const CIMConstMethod& declaration) {
    const Uint32 at = declaration.findParameter(nameOf(parameter));
    if (at == PEG_NOT_FOUND) {
        return parameter;
    }
    const CIMConstParameter declared = declaration.getParameter(at);
    return CIMParamValue(
        parameter.getParameterName(),
        declaredValue(parameter.getValue(), declared.getType(), declared.isArray()), true);
}

Array<CIMParamValue> typedParameters(const InvokeMethod& operation, const Request& request) {
    Array<CIMParamValue> result;
    for (Uint32 i = 0; i < operation.inParameters.size(); ++i) {
        const CIMParamValue& parameter = operation.inParameters[i];
        result.append(parameter.isTyped() ? parameter
                                          : typed(parameter, declarationOf(operation, request)));
    }
    return result;
}

} // namespace

void carryOut(const InvokeMethod& operation, const Request& request) {
    const Array<CIMParamValue> parameters = typedParameters(operation, request);
    const CIMName className = classOf(operation, request).getClassName();
    const String* name =
        request.server.registration.find(operation.nameSpace, className, ProviderType::method);
    if (!name) {
        throw CIMException(CIM_ERR_METHOD_NOT_AVAILABLE, operation.methodName.getString());
    }
    auto& provider = requireInterface<CIMMethodProvider>(request, *name);
    const CIMObjectPath path = providerPath(request, operation.nameSpace, operation.objectName);
    MethodResultHandler handler(request.sink);
    callProvider(handler, [&] {
        provider.invokeMethod(request.context, path, operation.methodName, parameters, handler);
    });
}

} // namespace smisd
