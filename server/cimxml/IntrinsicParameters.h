// The kinds of parameter that intrinsic methods have.
//
// Each is a function that reads all that is in an IPARAMVALUE into one field of an operation; one
// that may be null leaves the default then. All throw ElementError, or what the Pegasus value types
// throw for a part that they refuse.
#pragma once

#include <type_traits>

#include "server/cimxml/ElementReaders.h"
#include "server/operation/Operation.h"
#include "server/operation/Utf8.h"

namespace smisd::parameter {

// The operation, or the enumeration that it opens.
template<class T>
T& typed(Operation& operation) {
    if constexpr (std::is_constructible_v<Enumeration, T>) {
        if (auto* open = std::get_if<OpenEnumeration>(&operation)) {
            return std::get<T>(open->enumeration);
        }
    }
    return std::get<T>(operation);
}

// The field of the operation that a parameter fills, from a pointer to a member.
template<class Owner, class Field>
Field& fieldOf(Operation& operation, Field Owner::*member) {
    return typed<Owner>(operation).*member;
}

// The VALUE in a parameter.
Element requiredValue(Element& value);

// The only element in a parameter that may not be null.
Element requiredElement(Element& value, const char* elementName);

// TRUE or FALSE in any case.
bool readBoolean(const Element& value);

// Of 32 bits, without a sign.
Pegasus::Uint32 readNumber(const Element& value);

// Throws CIM_ERR_INVALID_PARAMETER for a class, or an instance without keys.
void requireKeys(const Pegasus::CIMObjectPath& path);

// Names that are given twice count once, in their first place.
Pegasus::CIMPropertyList readPropertyList(const Pegasus::CIMValue& names);

template<auto Member>
void flag(Element& value, Operation& operation) {
    fieldOf(operation, Member) = readBoolean(requiredValue(value));
}

template<auto Member>
void className(Element& value, Operation& operation) {
    fieldOf(operation, Member) = readClassName(value.expect("CLASSNAME"));
}

template<auto Member>
void classNameOrNull(Element& value, Operation& operation) {
    if (const auto element = value.take("CLASSNAME")) {
        fieldOf(operation, Member) = readClassName(*element);
    }
}

template<auto Member>
void instanceName(Element& value, Operation& operation) {
    fieldOf(operation, Member) = readInstanceName(requiredElement(value, "INSTANCENAME"));
}

// ObjectName of an association operation.
template<class T>
void objectName(Element& value, Operation& operation) {
    T& target = typed<T>(operation);
    if (const auto element = value.take("CLASSNAME")) {
        target.objectName = Pegasus::CIMObjectPath(Pegasus::String(), Pegasus::CIMNamespaceName(),
                                                   readClassName(*element));
        target.ofClass = true;
    } else {
        target.objectName = readInstanceName(
            value.expect("INSTANCENAME", "Expected CLASSNAME or INSTANCENAME element"));
    }
}

// InstanceName of an association operation whose results are pulled.
template<class T>
void sourceInstance(Element& value, Operation& operation) {
    objectName<T>(value, operation);
    requireKeys(typed<T>(operation).objectName);
}

template<auto Member>
void number(Element& value, Operation& operation) {
    fieldOf(operation, Member) = readNumber(requiredValue(value));
}

template<auto Member>
void requiredText(Element& value, Operation& operation) {
    fieldOf(operation, Member) = fromUtf8(requiredValue(value).text());
}

template<auto Member>
void name(Element& value, Operation& operation) {
    fieldOf(operation, Member) = Pegasus::CIMName(fromUtf8(requiredValue(value).text()));
}

template<auto Member>
void text(Element& value, Operation& operation) {
    if (const auto element = value.take("VALUE")) {
        fieldOf(operation, Member) = fromUtf8(element->text());
    }
}

template<auto Member>
void propertyList(Element& value, Operation& operation) {
    if (const auto names = takeArray(value, Pegasus::CIMTYPE_STRING)) {
        fieldOf(operation, Member) = readPropertyList(*names);
    }
}

template<auto Member>
void instance(Element& value, Operation& operation) {
    fieldOf(operation, Member) = readInstance(requiredElement(value, "INSTANCE"));
}

template<auto Member>
void namedInstance(Element& value, Operation& operation) {
    fieldOf(operation, Member) = readNamedInstance(requiredElement(value, "VALUE.NAMEDINSTANCE"));
}

// Of any type, which the request does not tell.
template<auto Member>
void anyValue(Element& value, Operation& operation) {
    std::optional<Pegasus::CIMValue> found = takeValue(value, Pegasus::CIMTYPE_STRING);
    if (!found) {
        found = takeArray(value, Pegasus::CIMTYPE_STRING);
    }
    if (!found) {
        found = takeReference(value);
    }
    fieldOf(operation, Member) = found.value_or(Pegasus::CIMValue());
}

} // namespace smisd::parameter
