// Writes down what an operation gives.
#pragma once

#include <string>
#include <vector>

#include "server/operation/Dispatcher.h"
#include "server/operation/Utf8.h"

namespace smisd {

// A line for each result: its kind, its path, name or value, and of instances, behind " | ", the
// property "Seen".
class RecordingSink : public ResultSink {
public:
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
    void qualifier(const QualifierDeclaration& qualifier) override;

    std::vector<std::string> lines;
    std::vector<Pegasus::CIMClass> classes; // also those of objectWithPath
};

} // namespace smisd
