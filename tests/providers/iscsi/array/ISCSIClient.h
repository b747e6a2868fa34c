#pragma once

#include <string>
#include <vector>

#include <Pegasus/Common/OperationContext.h>

#include "array/Array.h"
#include "providers/iscsi/iSCSIPipesProvider.h"
#include "providers/iscsi/iSCSISettingsProvider.h"
#include "tests/support/Client.h"
#include "tests/support/ServedArray.h"
#include "tests/support/TraceCapture.h"

namespace scripted {

// The providers of pipes and settings before the array of this process, which is emptied first, and
// what a client gets from them. Each function expects its operation to be completed.
class ISCSIClient {
public:
    ISCSIClient();

    // What the array has.
    array::Id addTarget(const std::string& name, std::uint32_t maxConnections = 4);
    array::Id addHost(const std::string& name, const std::vector<array::Id>& targets);
    array::Id addEndpoint(const std::string& address);

    // The instance operations of sessions, connections and the links between them.
    Paths instanceNames(const char* className);
    Instances instances(const char* className);
    Pegasus::CIMInstance instance(const Pegasus::CIMObjectPath& path);

    // The walks. Those with instances must give the same paths as those with names.
    Paths associators(const Pegasus::CIMObjectPath& source, const char* associationClass,
                      const char* resultClass);
    Paths references(const Pegasus::CIMObjectPath& source, const char* associationClass);

    // Settings and statistics: the lines of an instance; a change of one property.
    std::vector<std::string> settings(const char* className, array::Id id);
    void modify(const char* className, array::Id id, const char* property,
                const Pegasus::CIMValue& value);

    array::Array& array;

private:
    TraceCapture _capture;
    Pegasus::OperationContext _context;
    Pegasus::iSCSIPipesProvider _pipes;
    Pegasus::iSCSISettingsProvider _settings;
};

// The path of a request for an object by its key text.
Pegasus::CIMObjectPath pathOf(const char* className, const char* key, array::Id id);

std::vector<std::string> texts(const Paths& paths);

} // namespace scripted
