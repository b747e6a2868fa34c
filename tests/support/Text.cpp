#include "tests/support/Text.h"

#include <cstdio>

#include "engine/DRAVKeys.h"

using namespace Pegasus;

namespace scripted {

namespace {

std::string qualifierText(const CIMConstQualifier& qualifier) {
    std::string result = text(qualifier.getName()) + "=" + text(qualifier.getValue().toString());
    const std::string flavor = text(qualifier.getFlavor().toString());
    if (!flavor.empty()) {
        result += " " + flavor;
    }
    if (qualifier.getPropagated()) {
        result += " propagated";
    }
    return " [" + result + "]";
}

std::string propertyText(const CIMConstProperty& property) {
    std::string result = text(property.getName()) + ": " + text(property.getValue());
    if (!property.getReferenceClassName().isNull()) {
        result += " of " + text(property.getReferenceClassName());
    }
    if (!property.getClassOrigin().isNull()) {
        result += " from " + text(property.getClassOrigin());
    }
    if (property.getPropagated()) {
        result += " propagated";
    }
    for (Uint32 i = 0; i < property.getQualifierCount(); ++i) {
        result += qualifierText(property.getQualifier(i));
    }
    return result;
}

} // namespace

std::string text(const String& value) {
    return static_cast<const char*>(value.getCString());
}

std::string text(const CIMName& name) {
    return text(name.getString());
}

std::string text(const CIMObjectPath& path) {
    return text(path.toString());
}

std::string text(bool flag) {
    return flag ? "true" : "false";
}

std::string text(const CIMPropertyList& properties) {
    if (properties.isNull()) {
        return "all";
    }
    std::string names;
    for (Uint32 i = 0; i < properties.size(); ++i) {
        names += (i ? ", " : "") + text(properties[i]);
    }
    return "[" + names + "]";
}

std::string text(const CIMValue& value) {
    const std::string type = cimTypeToString(value.getType());
    const std::string array = value.isArray() ? "[] " : " ";
    return type + array + (value.isNull() ? "null" : text(value.toString()));
}

std::string idText(Uint32 id) {
    char digits[11];
    std::snprintf(digits, sizeof digits, "0x%08X", id);
    return digits;
}

std::string keyText(Uint32 id) {
    return text(DRAVObjectKey(id));
}

std::string quoted(const String& value) {
    return '"' + text(value) + '"';
}

std::vector<std::string> properties(const CIMInstance& instance) {
    const CIMConstInstance constInstance(instance);
    std::vector<std::string> lines;
    for (Uint32 i = 0; i < constInstance.getPropertyCount(); ++i) {
        lines.push_back(propertyText(constInstance.getProperty(i)));
    }
    return lines;
}

} // namespace scripted
