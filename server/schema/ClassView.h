// What a class consists of: with what it inherits, and the parts that a client asks to see.
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMPropertyList.h>

namespace smisd {

// The class as declared, completed with the properties, methods and qualifiers of its superclass
// (null if it has none), which is complete itself. What is inherited stands first and is marked as
// propagated; class origins are set. The arguments stay as they are.
Pegasus::CIMClass withInherited(const Pegasus::CIMClass& declared,
                                const Pegasus::CIMClass* superclass);

// What of a class declaration a client asks to see.
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
