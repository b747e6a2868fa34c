// Between an operation and the receiver of its results.
#pragma once

#include <functional>
#include <string>

#include "server/operation/Dispatcher.h"

namespace smisd {

// Passes all results on. Before an instance, or the path of one, it asks `check` with its class,
// which throws to end the operation. It keeps the return value of a method.
class WatchedSink : public ResultSink {
public:
    using Check = std::function<void(const Pegasus::CIMName& className)>;

    WatchedSink(ResultSink& sink, Check check) : _sink(sink), _check(std::move(check)) {}

    // The integer that a method returned; "" for none.
    const std::string& returned() const { return _returned; }

    void limitProperties(const Pegasus::CIMPropertyList& list) override;
    void includeClassOrigin() override;
    void instance(const Pegasus::CIMInstance& instance) override;
    void namedInstance(const Pegasus::CIMInstance& instance) override;
    void instanceName(const Pegasus::CIMObjectPath& path) override;
    void objectWithPath(const Pegasus::CIMObject& object) override;
    void objectPath(const Pegasus::CIMObjectPath& path) override;
    void instanceWithPath(const Pegasus::CIMObjectPath& path,
                          const Pegasus::CIMInstance& instance) override;
    void instancePath(const Pegasus::CIMObjectPath& path) override;
    void returnValue(const Pegasus::CIMValue& value) override;
    void outParameter(const Pegasus::CIMParamValue& parameter) override;
    void classDeclaration(const Pegasus::CIMClass& declaration) override;
    void className(const Pegasus::CIMName& name) override;
    void qualifier(const QualifierDeclaration& declaration) override;

private:
    ResultSink& _sink;
    const Check _check;
    std::string _returned;
};

} // namespace smisd
