// What the writers of elements share. Internal.

#pragma once

#include "pegasus/host/XmlWriter.h"

namespace Pegasus::Xml {

// A name needs no escapes.
void appendName(Text& out, const CIMName& name);

// The type as XML has it: an embedded object is a string.
inline std::string_view typeName(CIMType type) {
    return type >= CIMTYPE_OBJECT ? cimTypeToString(CIMTYPE_STRING) : cimTypeToString(type);
}

// The rest of an attribute, behind its opening quote: the type, and for an embedded object what
// kind it is.
inline void appendTypeOf(Text& out, const CIMValue& value) {
    out.append(typeName(value.getType())) += '"';
    if (value.getType() < CIMTYPE_OBJECT || value.isNull()) {
        return;
    }
    const std::string_view kind = value.getType() == CIMTYPE_OBJECT ? "object" : "instance";
    out.append(" EmbeddedObject=\"").append(kind);   // DSP0201 2.3
    out.append("\" EMBEDDEDOBJECT=\"").append(kind); // what older clients read
    out += '"';
}

} // namespace Pegasus::Xml
