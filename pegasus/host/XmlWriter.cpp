// Qualifiers, properties, instances, classes and arguments

#include <algorithm>
#include <utility>
#include <vector>

#include <Pegasus/Common/CIMObjectRep.h>
#include <Pegasus/Common/CIMPropertyRep.h>
#include <Pegasus/Common/PropertyListAccess.h>

#include "pegasus/host/XmlText.h"

namespace Pegasus::Xml {

namespace {

void appendNameAttribute(Text& out, std::string_view attribute, const CIMName& name) {
    out.append(attribute).append("=\"");
    appendName(out, name);
    out += '"';
}

// CLASSORIGIN and PROPAGATED of a property or method.
void appendOrigin(Text& out, const CIMName& classOrigin, bool propagated, const Parts& parts) {
    if (parts.classOrigin && !classOrigin.isNull()) {
        appendNameAttribute(out, " CLASSORIGIN", classOrigin);
    }
    if (propagated) {
        out += " PROPAGATED=\"true\"";
    }
}

void appendQualifiers(Text& out, const NamedList<CIMQualifier>& qualifiers, const Parts& parts) {
    for (Uint32 i = 0; parts.qualifiers && i < qualifiers.size(); ++i) {
        appendQualifier(out, qualifiers[i]);
    }
}

// Of a method or a parameter.
template<class T>
void appendQualifiersOf(Text& out, const T& x, const Parts& parts) {
    for (Uint32 i = 0; parts.qualifiers && i < x.getQualifierCount(); ++i) {
        appendQualifier(out, x.getQualifier(i));
    }
}

void appendArraySize(Text& out, Uint32 size) {
    if (size != 0) {
        out.append(" ARRAYSIZE=\"").append(std::to_string(size)) += '"';
    }
}

void appendParameter(Text& out, const CIMConstParameter& parameter, const Parts& parts) {
    const bool reference = parameter.getType() == CIMTYPE_REFERENCE;
    const std::string_view element =
        reference             ? parameter.isArray() ? "PARAMETER.REFARRAY" : "PARAMETER.REFERENCE"
        : parameter.isArray() ? "PARAMETER.ARRAY"
                              : "PARAMETER";
    out.append("<").append(element);
    appendNameAttribute(out, " NAME", parameter.getName());
    if (reference) {
        appendNameAttribute(out, " REFERENCECLASS", parameter.getReferenceClassName());
    } else {
        out.append(" TYPE=\"").append(typeName(parameter.getType())) += '"';
    }
    appendArraySize(out, parameter.getArraySize());
    out += ">\n";
    appendQualifiersOf(out, parameter, parts);
    out.append("</").append(element).append(">\n");
}

void appendMethod(Text& out, const CIMConstMethod& method, const Parts& parts) {
    out += "<METHOD NAME=\"";
    appendName(out, method.getName());
    out.append("\" TYPE=\"").append(typeName(method.getType())) += '"';
    appendOrigin(out, method.getClassOrigin(), method.getPropagated(), parts);
    out += ">\n";
    appendQualifiersOf(out, method, parts);
    for (Uint32 i = 0; i < method.getParameterCount(); ++i) {
        appendParameter(out, method.getParameter(i), parts);
    }
    out += "</METHOD>\n";
}

} // namespace

void appendQualifier(Text& out, const CIMConstQualifier& qualifier) {
    const CIMFlavor& flavor = qualifier.getFlavor();
    out += "<QUALIFIER NAME=\"";
    appendName(out, qualifier.getName());
    out.append("\" TYPE=\"").append(typeName(qualifier.getType())) += '"';
    if (qualifier.getPropagated()) {
        out += " PROPAGATED=\"true\"";
    }
    if (!flavor.hasFlavor(CIMFlavor::OVERRIDABLE)) {
        out += " OVERRIDABLE=\"false\"";
    }
    if (!flavor.hasFlavor(CIMFlavor::TOSUBCLASS)) {
        out += " TOSUBCLASS=\"false\"";
    }
    if (flavor.hasFlavor(CIMFlavor::TRANSLATABLE)) {
        out += " TRANSLATABLE=\"true\"";
    }
    out += ">\n";
    appendValue(out, qualifier.getValue());
    out += "</QUALIFIER>\n";
}

static void appendPropertyOf(Text& out, const CIMPropertyRep& property, const Parts& parts) {
    const CIMValue& value = property.value;
    const bool reference = value.getType() == CIMTYPE_REFERENCE;
    const std::string_view element = reference         ? "PROPERTY.REFERENCE"
                                     : value.isArray() ? "PROPERTY.ARRAY"
                                                       : "PROPERTY";
    out.append("<").append(element);
    appendNameAttribute(out, " NAME", property.name);
    out += ' ';
    if (reference && !property.referenceClassName.isNull()) {
        appendNameAttribute(out, " REFERENCECLASS", property.referenceClassName);
    }
    appendOrigin(out, property.classOrigin, property.propagated, parts);
    if (!reference) {
        out += " TYPE=\"";
        appendTypeOf(out, value);
    }
    appendArraySize(out, property.arraySize);
    out += ">\n";
    appendQualifiers(out, property.qualifiers, parts);
    appendValue(out, value);
    out.append("</").append(element).append(">\n");
}

void appendProperty(Text& out, const CIMConstProperty& property, const Parts& parts) {
    appendPropertyOf(out, PropertyAccess::content(property), parts);
}

// The properties that a long list names, in its order: each is looked up in the list, whose length
// then hardly counts.
static void appendListed(Text& out, const NamedList<CIMProperty>& all, const Parts& parts) {
    std::vector<std::pair<Uint32, Uint32>> listed; // place in the list, index of the property
    for (Uint32 i = 0; i < all.size(); ++i) {
        PropertyListAccess::eachPlace(parts.properties, all[i].getName(),
                                      [&](Uint32 place) { listed.emplace_back(place, i); });
    }
    std::sort(listed.begin(), listed.end());
    for (const auto& [place, index] : listed) {
        appendPropertyOf(out, PropertyAccess::content(all[index]), parts);
    }
}

static void appendProperties(Text& out, const NamedList<CIMProperty>& all, const Parts& parts) {
    if (parts.properties.isNull()) {
        for (Uint32 i = 0; i < all.size(); ++i) {
            appendPropertyOf(out, PropertyAccess::content(all[i]), parts);
        }
        return;
    }
    if (PropertyListAccess::isLong(parts.properties)) {
        return appendListed(out, all, parts);
    }
    for (Uint32 i = 0; i < parts.properties.size(); ++i) {
        const Uint32 index = all.find(parts.properties[i]);
        if (index != PEG_NOT_FOUND) {
            appendPropertyOf(out, PropertyAccess::content(all[index]), parts);
        }
    }
}

static void appendInstanceOf(Text& out, const CIMObjectRep& instance, const Parts& parts) {
    out += "<INSTANCE CLASSNAME=\"";
    appendName(out, instance.path.getClassName());
    out += "\" >\n";
    appendQualifiers(out, instance.qualifiers, parts);
    appendProperties(out, instance.properties, parts);
    out += "</INSTANCE>\n";
}

void appendInstance(Text& out, const CIMInstance& instance, const Parts& parts) {
    appendInstanceOf(out, ObjectAccess::content(instance), parts);
}

void appendClass(Text& out, const CIMConstClass& cimClass, const Parts& parts) {
    out += "<CLASS NAME=\"";
    appendName(out, cimClass.getClassName());
    out += "\" ";
    if (!cimClass.getSuperClassName().isNull()) {
        appendNameAttribute(out, " SUPERCLASS", cimClass.getSuperClassName());
        out += ' ';
    }
    out += ">\n";
    const CIMObjectRep& content = ObjectAccess::content(cimClass);
    appendQualifiers(out, content.qualifiers, parts);
    appendProperties(out, content.properties, parts);
    for (Uint32 i = 0; i < cimClass.getMethodCount(); ++i) {
        appendMethod(out, cimClass.getMethod(i), parts);
    }
    out += "</CLASS>\n";
}

void appendObject(Text& out, const CIMConstObject& object, const Parts& parts) {
    if (object.isClass()) {
        appendClass(out, CIMConstClass(object), parts);
    } else {
        appendInstanceOf(out, ObjectAccess::content(object), parts);
    }
}

void appendParamValue(Text& out, const CIMParamValue& param) {
    const CIMValue value = param.getValue();
    out += "<PARAMVALUE NAME=\"";
    appendEscaped(out, param.getParameterName());
    out += '"';
    if (param.isTyped()) {
        out += " PARAMTYPE=\"";
        appendTypeOf(out, value);
    }
    out += ">\n";
    appendValue(out, value);
    out += "</PARAMVALUE>\n";
}

void appendReturnValue(Text& out, const CIMValue& value) {
    out += "<RETURNVALUE PARAMTYPE=\"";
    appendTypeOf(out, value);
    out += ">\n";
    appendValue(out, value);
    out += "</RETURNVALUE>\n";
}

} // namespace Pegasus::Xml
