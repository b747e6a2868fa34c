#include "server/cimxml/NameReader.h"

using namespace Pegasus;

namespace smisd {
namespace {

CIMName legalName(const Element& element, const char* attributeName, const std::string& text) {
    const String name = toString(text);
    if (!CIMName::legal(name)) {
        element.fail(ElementError::semantic, std::string("Illegal value for ") + element.name() +
                                                 "." + attributeName + " attribute");
    }
    return CIMName(name);
}

} // namespace

String toString(const std::string& utf8) {
    return String(utf8.data(), static_cast<Uint32>(utf8.size()));
}

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

} // namespace smisd
