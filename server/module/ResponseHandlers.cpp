#include "server/module/ResponseHandlers.h"

#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace smisd {

void failNotInitialized() {
    throw CIMException(CIM_ERR_FAILED, String("The object is not initialized."));
}

void failTooFew() {
    throw CIMException(CIM_ERR_FAILED, String("Too few objects delivered."));
}

void failTooMany() {
    throw CIMException(CIM_ERR_FAILED, String("Too many objects delivered."));
}

void MethodResultHandler::complete() {
    guarded([&] {
        if (_returnValue) {
            _sink.returnValue(*_returnValue);
        }
        for (const CIMParamValue& parameter : _parameters) {
            _sink.outParameter(parameter);
        }
    });
    _returnValue.reset();
    _parameters.clear();
}

void MethodResultHandler::deliver(const CIMValue& returnValue) {
    requireInitialized(returnValue);
    _returnValue = returnValue;
}

void MethodResultHandler::deliverParamValue(const CIMParamValue& parameter) {
    requireInitialized(parameter);
    _parameters.push_back(parameter);
}

void MethodResultHandler::deliverParamValue(const Array<CIMParamValue>& parameters) {
    for (Uint32 i = 0; i < parameters.size(); ++i) {
        deliverParamValue(parameters[i]);
    }
}

} // namespace smisd
