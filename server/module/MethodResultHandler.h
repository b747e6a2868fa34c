// The response handler of an extrinsic method.
#pragma once

#include "server/module/ResponseHandlers.h"
#include "server/operation/ResultSink.h"

#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>

#include <optional>
#include <vector>

namespace smisd {

// At complete() the sink takes the return value, the last one of several, and then the output
// parameters in the order of their delivery. A null return value is refused as an object that is
// not initialized.
class MethodResultHandler : public Pegasus::MethodResultResponseHandler, public ReceiverGuard {
public:
    explicit MethodResultHandler(ResultSink& sink) : _sink(sink) {}

    void processing() override {}
    void complete() override;
    void deliver(const Pegasus::CIMValue& returnValue) override;
    void deliverParamValue(const Pegasus::CIMParamValue& parameter) override;
    void deliverParamValue(const Pegasus::Array<Pegasus::CIMParamValue>& parameters) override;

private:
    ResultSink& _sink;
    std::optional<Pegasus::CIMValue> _returnValue;
    std::vector<Pegasus::CIMParamValue> _parameters;
};

} // namespace smisd
