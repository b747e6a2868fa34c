#include <cstring>

#include "server/cimxml/ElementReaders.h"
#include "server/operation/TypedValue.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

CIMName legalName(const Element& element, const char* attributeName, const std::string& text) {
    const String name = fromUtf8(text);
    if (!CIMName::legal(name)) {
        element.fail(ElementError::semantic, std::string("Illegal value for ") + element.name() +
                                                 "." + attributeName + " attribute");
    }
    return CIMName(name);
}

constexpr CIMType types[] = {CIMTYPE_BOOLEAN, CIMTYPE_STRING,  CIMTYPE_CHAR16, CIMTYPE_UINT8,
                             CIMTYPE_SINT8,   CIMTYPE_UINT16,  CIMTYPE_SINT16, CIMTYPE_UINT32,
                             CIMTYPE_SINT32,  CIMTYPE_UINT64,  CIMTYPE_SINT64, CIMTYPE_REAL32,
                             CIMTYPE_REAL64,  CIMTYPE_DATETIME};

std::optional<CIMType> typeNamed(const std::string& name, const char* attributeName) {
    for (const CIMType type : types) {
        if (name == cimTypeToString(type)) {
            return type;
        }
    }
    if (name == "reference" && std::strcmp(attributeName, "PARAMTYPE") == 0) {
        return CIMTYPE_REFERENCE;
    }
    return std::nullopt;
}

// Runs `convert` and reports a text that is no literal of its type where it stands.
template<class Convert>
CIMValue converted(const Element& element, Convert convert) {
    try {
        return convert();
    } catch (const InvalidLiteral& invalid) {
        element.fail(ElementError::semantic, invalid.what());
    }
}

CIMValue readReferenceArray(Element element) {
    Array<CIMObjectPath> paths;
    while (const auto reference = element.take("VALUE.REFERENCE")) {
        paths.append(readValueReference(*reference));
    }
    element.end();
    return CIMValue(paths);
}

} // namespace

CIMName readName(const Element& element, const char* attributeName) {
    return legalName(element, attributeName, element.requiredAttribute(attributeName));
}

CIMName readOptionalName(const Element& element, const char* attributeName) {
    const std::optional<std::string> text = element.attribute(attributeName);
    return text ? legalName(element, attributeName, *text) : CIMName();
}

bool readFlag(const Element& element, const char* attributeName, bool otherwise) {
    const std::optional<std::string> text = element.attribute(attributeName);
    if (!text) {
        return otherwise;
    }
    if (*text != "true" && *text != "false") {
        element.fail(ElementError::semantic, std::string("Invalid ") + attributeName + "." +
                                                 element.name() + " attribute value");
    }
    return *text == "true";
}

CIMType readType(const Element& element, const char* attributeName) {
    const std::optional<CIMType> type =
        typeNamed(element.requiredAttribute(attributeName), attributeName);
    if (!type) {
        element.fail(ElementError::semantic, std::string("Illegal value for ") + element.name() +
                                                 "." + attributeName + " attribute");
    }
    return *type;
}

std::optional<CIMValue> takeValue(Element& parent, CIMType type) {
    const std::optional<Element> element = parent.take("VALUE");
    if (!element) {
        return std::nullopt;
    }
    const String text = fromUtf8(element->text());
    return converted(*element, [&] { return valueFromText(text, type); });
}

std::optional<CIMValue> takeArray(Element& parent, CIMType type) {
    std::optional<Element> element = parent.take("VALUE.ARRAY");
    if (!element) {
        return std::nullopt;
    }
    Array<String> texts;
    while (const auto value = element->take("VALUE")) {
        texts.append(fromUtf8(value->text()));
    }
    element->end();
    return converted(*element, [&] { return arrayFromText(texts, type); });
}

std::optional<CIMValue> takeReference(Element& parent) {
    if (const auto reference = parent.take("VALUE.REFERENCE")) {
        return CIMValue(readValueReference(*reference));
    }
    if (const auto array = parent.take("VALUE.REFARRAY")) {
        return readReferenceArray(*array);
    }
    return std::nullopt;
}

CIMParamValue readParamValue(Element element) {
    const String name = fromUtf8(element.requiredAttribute("NAME", "Missing"));
    const bool hasType = element.attribute("PARAMTYPE").has_value();
    const CIMType type = hasType ? readType(element, "PARAMTYPE") : CIMTYPE_STRING;

    const bool mayBeReference = !hasType || type == CIMTYPE_REFERENCE;
    std::optional<CIMValue> value = mayBeReference ? takeReference(element) : std::nullopt;
    const bool isReference = value.has_value();
    if (!value && type != CIMTYPE_REFERENCE) {
        value = takeArray(element, type);
    }
    if (!value && type != CIMTYPE_REFERENCE) {
        value = takeValue(element, type);
    }
    element.end();
    return CIMParamValue(name, value.value_or(CIMValue()), isReference || (hasType && value));
}

} // namespace smisd
