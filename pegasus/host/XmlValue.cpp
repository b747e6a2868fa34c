// VALUE, VALUE.ARRAY, VALUE.REFERENCE and VALUE.REFARRAY

#include <charconv>
#include <cstdio>

#include <Pegasus/Common/CIMValueAccess.h>

#include "pegasus/host/XmlText.h"

namespace Pegasus::Xml {

namespace {

void appendText(Text& out, Boolean x) {
    out += x ? "TRUE" : "FALSE";
}

void appendText(Text& out, Real32 x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.7e", Real64(x));
    out += text;
}

void appendText(Text& out, Real64 x) {
    char text[32];
    std::snprintf(text, sizeof text, "%.16e", x);
    out += text;
}

void appendText(Text& out, const Char16& x) {
    appendEscaped(out, String(&x, 1));
}

void appendText(Text& out, const String& x) {
    appendEscaped(out, x);
}

void appendText(Text& out, const CIMDateTime& x) {
    appendEscaped(out, x.toString());
}

void appendText(Text& out, const CIMObject& x) {
    Text xml;
    appendObject(xml, x);
    appendEscaped(out, xml.view());
}

void appendText(Text& out, const CIMInstance& x) {
    appendText(out, CIMObject(x));
}

template<class T>
requires std::is_integral_v<T>
void appendText(Text& out, T x) {
    const std::size_t most = 24;
    char* const digits = out.room(most);
    out.added(static_cast<std::size_t>(std::to_chars(digits, digits + most, x).ptr - digits));
}

template<class T>
void appendElement(Text& out, const T& x) {
    out += "<VALUE>";
    appendText(out, x);
    out += "</VALUE>\n";
}

void appendElement(Text& out, const CIMObjectPath& x) {
    appendValueReference(out, x);
}

template<class T>
void appendElement(Text& out, const Array<T>& x) {
    const std::string_view name =
        std::is_same_v<T, CIMObjectPath> ? "VALUE.REFARRAY" : "VALUE.ARRAY";
    out.append("<").append(name).append(">\n");
    for (Uint32 i = 0; i < x.size(); ++i) {
        appendElement(out, x[i]);
    }
    out.append("</").append(name).append(">\n");
}

} // namespace

void appendValue(Text& out, const CIMValue& value) {
    if (!value.isNull()) {
        visit(value, [&](const auto& content) { appendElement(out, content); });
    }
}

} // namespace Pegasus::Xml
