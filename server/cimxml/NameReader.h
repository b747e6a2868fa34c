// CIM names in attributes. All functions throw ElementError.
#pragma once

#include "server/cimxml/XmlDocument.h"

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

namespace smisd {

// A legal CIM name in a required attribute: "Illegal value for PROPERTY.NAME attribute".
Pegasus::CIMName readName(const Element& element, const char* attributeName = "NAME");

// The same where the attribute may be absent: a null name.
Pegasus::CIMName readOptionalName(const Element& element, const char* attributeName);

// "true" or "false"; the default when absent.
bool readFlag(const Element& element, const char* attributeName, bool otherwise);

Pegasus::String toString(const std::string& utf8);

} // namespace smisd
