// The elements of a request as CIM names, values, paths and instances (DSP0201).
//
// Every function reads one element and all that is in it, or one attribute. It throws ElementError
// when that is malformed, or what the Pegasus value types throw for a part that they refuse.
#pragma once

#include <optional>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>

#include "server/cimxml/XmlDocument.h"

namespace smisd {

// Attributes

// A legal CIM name in a required attribute: "Illegal value for PROPERTY.NAME attribute".
Pegasus::CIMName readName(const Element& element, const char* attributeName = "NAME");

// The same where the attribute may be absent: a null name.
Pegasus::CIMName readOptionalName(const Element& element, const char* attributeName);

// "true" or "false"; the default when absent.
bool readFlag(const Element& element, const char* attributeName, bool otherwise);

// Values ("Value Elements")

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

// Paths ("Naming and Location Elements")

// LOCALNAMESPACEPATH
Pegasus::CIMNamespaceName readLocalNamespacePath(Element element);

// CLASSNAME
Pegasus::CIMName readClassName(const Element& element);

// INSTANCENAME: keys as sent; a lone KEYVALUE or VALUE.REFERENCE is a key with a null name
Pegasus::CIMObjectPath readInstanceName(Element element);

// LOCALINSTANCEPATH, LOCALCLASSPATH: with a namespace
Pegasus::CIMObjectPath readLocalInstancePath(Element element);
Pegasus::CIMObjectPath readLocalClassPath(Element element);

// VALUE.REFERENCE: with host and namespace only when they were sent
Pegasus::CIMObjectPath readValueReference(Element element);

// Instances ("Object Definition Elements")

// INSTANCE: its path is its class alone. Properties are as sent, known to the class or not.
Pegasus::CIMInstance readInstance(Element element);

// VALUE.NAMEDINSTANCE: the path has the keys.
Pegasus::CIMInstance readNamedInstance(Element element);

} // namespace smisd
