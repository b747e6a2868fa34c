#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

#include "server/cimxml/XmlDocument.h"

namespace smisd {

// CIM names in attributes. All functions throw ElementError.

// A legal CIM name in a required attribute: "Illegal value for PROPERTY.NAME attribute".
Pegasus::CIMName readName(const Element& element, const char* attributeName = "NAME");

// The same where the attribute may be absent: a null name.
Pegasus::CIMName readOptionalName(const Element& element, const char* attributeName);

// "true" or "false"; the default when absent.
bool readFlag(const Element& element, const char* attributeName, bool otherwise);

Pegasus::String toString(const std::string& utf8);

// Values in a request (DSP0201, "Value Elements").
//
// All functions throw ElementError, or what the Pegasus value types throw for a part that they
// refuse.

// The type that the attribute names, "TYPE" of a property or "PARAMTYPE" of a parameter; only the
// latter may be "reference".
Pegasus::CIMType readType(const Element& element, const char* attributeName);

// The child VALUE or VALUE.ARRAY of a typed element, if it comes next.
std::optional<Pegasus::CIMValue> takeValue(Element& parent, Pegasus::CIMType type);
std::optional<Pegasus::CIMValue> takeArray(Element& parent, Pegasus::CIMType type);

// The child VALUE.REFERENCE or VALUE.REFARRAY, if it comes next.
std::optional<Pegasus::CIMValue> takeReference(Element& parent);

// PARAMVALUE. Without a type, or without a value, it is untyped: a string, an array of strings or a
// null. References need no type.
Pegasus::CIMParamValue readParamValue(Element element);

} // namespace smisd
