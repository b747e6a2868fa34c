// Qualifiers, properties, instances, classes and arguments

#include <host/XmlText.h>

namespace Pegasus::Xml {

namespace {

// CLASSORIGIN and PROPAGATED of a property or method.
template<class T>
void appendOrigin(std::string& out, const T& x, const Parts& parts) {
    if (parts.classOrigin && !x.getClassOrigin().isNull())
        appendAttribute(out, " CLASSORIGIN", x.getClassOrigin().getString());
    if (x.getPropagated())
        out += " PROPAGATED=\"true\"";
}

template<class T>
void appendQualifiers(std::string& out, const T& x, const Parts& parts) {
    for (Uint32 i = 0; parts.qualifiers && i < x.getQualifierCount(); ++i)
        appendQualifier(out, x.getQualifier(i));
}

template<class T>
void appendProperties(std::string& out, const T& x, const Parts& parts) {
    if (parts.properties.isNull()) {
        for (Uint32 i = 0; i < x.getPropertyCount(); ++i)
            appendProperty(out, x.getProperty(i), parts);
        return;
    }
    for (Uint32 i = 0; i < parts.properties.size(); ++i) {
        const Uint32 index = x.findProperty(parts.properties[i]);
        if (index != PEG_NOT_FOUND)
            appendProperty(out, x.getProperty(index), parts);
    }
}

void appendArraySize(std::string& out, Uint32 size) {
    if (size != 0)
        appendPlainAttribute(out, " ARRAYSIZE", std::to_string(size));
}

void appendParameter(std::string& out, const CIMConstParameter& parameter, const Parts& parts) {
    const bool reference = parameter.getType() == CIMTYPE_REFERENCE;
    const char* const element =
        reference             ? parameter.isArray() ? "PARAMETER.REFARRAY" : "PARAMETER.REFERENCE"
        : parameter.isArray() ? "PARAMETER.ARRAY"
                              : "PARAMETER";
    out.append("<").append(element).append(" ");
    appendAttribute(out, "NAME", parameter.getName().getString());
    if (reference)
        appendAttribute(out, " REFERENCECLASS", parameter.getReferenceClassName().getString());
    else
        appendPlainAttribute(out, " TYPE", typeName(parameter.getType()));
    appendArraySize(out, parameter.getArraySize());
    out += ">\n";
    appendQualifiers(out, parameter, parts);
    out.append("</").append(element).append(">\n");
}

void appendMethod(std::string& out, const CIMConstMethod& method, const Parts& parts) {
    out += "<METHOD ";
    appendAttribute(out, "NAME", method.getName().getString());
    appendPlainAttribute(out, " TYPE", typeName(method.getType()));
    appendOrigin(out, method, parts);
    out += ">\n";
    appendQualifiers(out, method, parts);
    for (Uint32 i = 0; i < method.getParameterCount(); ++i)
        appendParameter(out, method.getParameter(i), parts);
    out += "</METHOD>\n";
}

} // namespace

void appendQualifier(std::string& out, const CIMConstQualifier& qualifier) {
    const CIMFlavor& flavor = qualifier.getFlavor();
    out += "<QUALIFIER ";
    appendAttribute(out, "NAME", qualifier.getName().getString());
    appendPlainAttribute(out, " TYPE", typeName(qualifier.getType()));
    if (qualifier.getPropagated())
        out += " PROPAGATED=\"true\"";
    if (!flavor.hasFlavor(CIMFlavor::OVERRIDABLE))
        out += " OVERRIDABLE=\"false\"";
    if (!flavor.hasFlavor(CIMFlavor::TOSUBCLASS))
        out += " TOSUBCLASS=\"false\"";
    if (flavor.hasFlavor(CIMFlavor::TRANSLATABLE))
        out += " TRANSLATABLE=\"true\"";
    out += ">\n";
    appendValue(out, qualifier.getValue());
    out += "</QUALIFIER>\n";
}

void appendProperty(std::string& out, const CIMConstProperty& property, const Parts& parts) {
    const CIMValue& value = property.getValue();
    const bool reference = value.getType() == CIMTYPE_REFERENCE;
    const char* const element = reference         ? "PROPERTY.REFERENCE"
                                : value.isArray() ? "PROPERTY.ARRAY"
                                                  : "PROPERTY";
    out.append("<").append(element).append(" ");
    appendAttribute(out, "NAME", property.getName().getString());
    out += ' ';
    if (reference && !property.getReferenceClassName().isNull())
        appendAttribute(out, " REFERENCECLASS", property.getReferenceClassName().getString());
    appendOrigin(out, property, parts);
    if (!reference)
        appendType(out, " TYPE", value);
    appendArraySize(out, property.getArraySize());
    out += ">\n";
    appendQualifiers(out, property, parts);
    appendValue(out, value);
    out.append("</").append(element).append(">\n");
}

void appendInstance(std::string& out, const CIMConstInstance& instance, const Parts& parts) {
    out += "<INSTANCE ";
    appendAttribute(out, "CLASSNAME", instance.getClassName().getString());
    out += " >\n";
    appendQualifiers(out, instance, parts);
    appendProperties(out, instance, parts);
    out += "</INSTANCE>\n";
}

void appendClass(std::string& out, const CIMConstClass& cimClass, const Parts& parts) {
    out += "<CLASS ";
    appendAttribute(out, "NAME", cimClass.getClassName().getString());
    out += ' ';
    if (!cimClass.getSuperClassName().isNull()) {
        appendAttribute(out, " SUPERCLASS", cimClass.getSuperClassName().getString());
        out += ' ';
    }
    out += ">\n";
    appendQualifiers(out, cimClass, parts);
    appendProperties(out, cimClass, parts);
    for (Uint32 i = 0; i < cimClass.getMethodCount(); ++i)
        appendMethod(out, cimClass.getMethod(i), parts);
    out += "</CLASS>\n";
}

void appendObject(std::string& out, const CIMConstObject& object, const Parts& parts) {
    if (object.isClass())
        appendClass(out, CIMConstClass(object), parts);
    else
        appendInstance(out, CIMConstInstance(object), parts);
}

void appendParamValue(std::string& out, const CIMParamValue& param) {
    const CIMValue value = param.getValue();
    out += "<PARAMVALUE ";
    appendAttribute(out, "NAME", param.getParameterName());
    if (param.isTyped())
        appendType(out, " PARAMTYPE", value);
    out += ">\n";
    appendValue(out, value);
    out += "</PARAMVALUE>\n";
}

void appendReturnValue(std::string& out, const CIMValue& value) {
    out += "<RETURNVALUE ";
    appendType(out, "PARAMTYPE", value);
    out += ">\n";
    appendValue(out, value);
    out += "</RETURNVALUE>\n";
}

} // namespace Pegasus::Xml
