// VALUE, VALUE.ARRAY, VALUE.REFERENCE and VALUE.REFARRAY

#include <Pegasus/Common/CIMValueAccess.h>
#include <charconv>
#include <cstdio>
#include <host/XmlText.h>

namespace Pegasus::Xml {

namespace {

void appendText(std::string& out, Boolean x) {
    out += x ? "TRUE" : "FALSE";
}

void appendText(std::string& out, Real32 x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.7e", Real64(x));
    out += text;
}

void appendText(std::string& out, Real64 x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.16e", x);
    out += text;
}

void appendText(std::string& out, const Char16& x) {
    appendEscaped(out, String(&x, 1));
}

void appendText(std::string& out, const String& x) {
    appendEscaped(out, x);
}

void appendText(std::string& out, const CIMDateTime& x) {
    appendEscaped(out, x.toString());
}

void appendText(std::string& out, const CIMObject& x) {
    std::string xml;
    appendObject(xml, x);
    appendEscaped(out, xml);
}

void appendText(std::string& out, const CIMInstance& x) {
    appendText(out, CIMObject(x));
}

template<class T>
requires std::is_integral_v<T>
void appendText(std::string& out, T x) {
    char text[24];
    out.append(text, std::to_chars(text, text + sizeof text, x).ptr);
}

template<class T>
void appendElement(std::string& out, const T& x) {
    out += "<VALUE>";
    appendText(out, x);
    out += "</VALUE>\n";
}

void appendElement(std::string& out, const CIMObjectPath& x) {
    appendValueReference(out, x);
}

template<class T>
void appendElement(std::string& out, const Array<T>& x) {
    const char* const name = std::is_same_v<T, CIMObjectPath> ? "VALUE.REFARRAY" : "VALUE.ARRAY";
    out.append("<").append(name).append(">\n");
    for (Uint32 i = 0; i < x.size(); ++i)
        appendElement(out, x[i]);
    out.append("</").append(name).append(">\n");
}

} // namespace

void appendValue(std::string& out, const CIMValue& value) {
    if (!value.isNull())
        visit(value, [&](const auto& content) { appendElement(out, content); });
}

} // namespace Pegasus::Xml
