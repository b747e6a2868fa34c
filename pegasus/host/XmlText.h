// What the writers of elements share. Internal.

#ifndef PEGASUS_HOST_XMLTEXT_H
#define PEGASUS_HOST_XMLTEXT_H

#include <host/XmlWriter.h>

namespace Pegasus::Xml {

// The content of VALUE or KEYVALUE, and a name as an attribute: name="text".
template<class Text>
void appendAttribute(std::string& out, const char* name, const Text& text) {
    out.append(name).append("=\"");
    appendEscaped(out, text);
    out += '"';
}

// The same where nothing needs to be escaped.
inline void appendPlainAttribute(std::string& out, const char* name, std::string_view text) {
    out.append(name).append("=\"").append(text) += '"';
}

inline void appendElement(std::string& out, const char* name, const String& text) {
    out.append("<").append(name).append(">");
    appendEscaped(out, text);
    out.append("</").append(name).append(">\n");
}

// The type as XML has it: an embedded object is a string.
inline const char* typeName(CIMType type) {
    return type >= CIMTYPE_OBJECT ? cimTypeToString(CIMTYPE_STRING) : cimTypeToString(type);
}

// NAME="type" and, for an embedded object, what kind it is.
inline void appendType(std::string& out, const char* name, const CIMValue& value) {
    appendPlainAttribute(out, name, typeName(value.getType()));
    if (value.getType() < CIMTYPE_OBJECT || value.isNull())
        return;
    const std::string_view kind = value.getType() == CIMTYPE_OBJECT ? "object" : "instance";
    appendPlainAttribute(out, " EmbeddedObject", kind); // DSP0201 2.3
    appendPlainAttribute(out, " EMBEDDEDOBJECT", kind); // what older clients read
}

} // namespace Pegasus::Xml

#endif
