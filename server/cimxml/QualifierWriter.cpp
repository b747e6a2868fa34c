#include "server/cimxml/QualifierWriter.h"

#include "pegasus/host/XmlWriter.h"

#include <Pegasus/Common/CIMType.h>

using namespace Pegasus;

namespace smisd {
namespace {

void appendFlag(Text& out, const char* attribute, bool value) {
    out.append(" ").append(attribute).append(value ? "=\"true\"" : "=\"false\"");
}

// Only what differs from the defaults of the DTD.
void appendFlavor(Text& out, const CIMFlavor& flavor) {
    if (!flavor.hasFlavor(CIMFlavor::OVERRIDABLE)) {
        appendFlag(out, "OVERRIDABLE", false);
    }
    if (!flavor.hasFlavor(CIMFlavor::TOSUBCLASS)) {
        appendFlag(out, "TOSUBCLASS", false);
    }
    if (flavor.hasFlavor(CIMFlavor::TRANSLATABLE)) {
        appendFlag(out, "TRANSLATABLE", true);
    }
}

void appendScope(Text& out, const QualifierScope& scope) {
    const struct {
        const char* attribute;
        bool included;
    } elements[] = {{"CLASS", scope.onClass},          {"ASSOCIATION", scope.onAssociation},
                    {"REFERENCE", scope.onReference},  {"PROPERTY", scope.onProperty},
                    {"METHOD", scope.onMethod},        {"PARAMETER", scope.onParameter},
                    {"INDICATION", scope.onIndication}};
    out += "<SCOPE";
    for (const auto& element : elements) {
        if (element.included) {
            appendFlag(out, element.attribute, true);
        }
    }
    out += "/>";
}

} // namespace

void appendQualifierDeclaration(Text& out, const QualifierDeclaration& declaration) {
    out += "<QUALIFIER.DECLARATION NAME=\"";
    Xml::appendEscaped(out, declaration.name.getString());
    out.append("\" TYPE=\"").append(cimTypeToString(declaration.value.getType())).append("\"");
    if (declaration.value.isArray()) {
        appendFlag(out, "ISARRAY", true);
    }
    appendFlavor(out, declaration.flavor);
    out += ">\n";
    appendScope(out, declaration.scope);
    Xml::appendValue(out, declaration.value);
    out += "</QUALIFIER.DECLARATION>\n";
}

} // namespace smisd
