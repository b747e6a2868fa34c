// The values of a MOF file.
#pragma once

#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

#include "server/schema/MofTree.h"

namespace smisd::mof {

// Type and arrayness of a property, parameter, method or qualifier.
struct DeclaredType {
    Pegasus::CIMType type = Pegasus::CIMTYPE_STRING;
    Pegasus::CIMName referenceClass; // of a reference
    bool isArray = false;
    Pegasus::Uint32 arraySize = 0; // 0 is any size
};

// The type from the children TypeWord or ReferenceClass, and ArrayMark, of a node.
DeclaredType typeOf(const Node& declaration);

// "uint16[]": as messages name a type.
std::string typeName(const DeclaredType& type);

// The null value of the type.
Pegasus::CIMValue nullValue(const DeclaredType& type);

// The value that `parent` has among its children, in the declared type. Throws MofError if it is
// none of that type.
Pegasus::CIMValue valueOf(const Node& parent, const DeclaredType& type);

// The text of a StringValue, its parts joined and its escapes resolved.
Pegasus::String textOf(const Node& stringValue);

} // namespace smisd::mof
