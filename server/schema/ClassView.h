// What of a class declaration a client asks to see.
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMPropertyList.h>

namespace smisd {

struct ClassParts {
    bool localOnly;
    bool includeQualifiers;
    bool includeClassOrigin;
    Pegasus::CIMPropertyList properties; // null: all
};

// A copy of the complete class with these parts: with `localOnly`, only what the class declares
// itself; of the properties those in the list, in the order of the class.
Pegasus::CIMClass viewOf(const Pegasus::CIMClass& complete, const ClassParts& parts);

} // namespace smisd
