// The schemas of all namespaces of the server.
#pragma once

#include "server/schema/NameOrder.h"
#include "server/schema/Schema.h"

#include <Pegasus/Common/CIMName.h>

#include <map>

namespace smisd {

// Filled once, by one thread; then read by any number of them.
class Repository {
public:
    using Schemas = std::map<Pegasus::CIMNamespaceName, Schema, NameOrder>;

    // Makes the namespace if there is none of the name.
    Schema& open(const Pegasus::CIMNamespaceName& nameSpace) { return _schemas[nameSpace]; }

    // Null if there is no such namespace.
    const Schema* find(const Pegasus::CIMNamespaceName& nameSpace) const {
        const auto found = _schemas.find(nameSpace);
        return found == _schemas.end() ? nullptr : &found->second;
    }

    const Schemas& schemas() const { return _schemas; }

private:
    Schemas _schemas;
};

} // namespace smisd
