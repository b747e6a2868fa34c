// Object paths

#include "pegasus/host/XmlText.h"

namespace Pegasus::Xml {

static void appendKeyValue(Text& out, const CIMKeyBinding& key) {
    if (key.getType() == CIMKeyBinding::REFERENCE) {
        appendValueReference(out, CIMObjectPath(key.getValue()));
        return;
    }
    const std::string_view type = key.getType() == CIMKeyBinding::BOOLEAN   ? "boolean"
                                  : key.getType() == CIMKeyBinding::NUMERIC ? "numeric"
                                                                            : "string";
    out.append("<KEYVALUE VALUETYPE=\"").append(type).append("\">");
    appendEscaped(out, key.getValue());
    out += "</KEYVALUE>\n";
}

void appendInstanceName(Text& out, const CIMObjectPath& path) {
    out += "<INSTANCENAME CLASSNAME=\"";
    appendName(out, path.getClassName());
    out += "\">\n";
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        out += "<KEYBINDING NAME=\"";
        appendName(out, keys[i].getName());
        out += "\">\n";
        appendKeyValue(out, keys[i]);
        out += "</KEYBINDING>\n";
    }
    out += "</INSTANCENAME>\n";
}

void appendLocalNamespacePath(Text& out, const CIMNamespaceName& nameSpace) {
    out += "<LOCALNAMESPACEPATH>\n";
    const String& text = nameSpace.getString();
    for (Uint32 begin = 0; begin < text.size();) {
        const Uint32 slash = text.find(begin, Char16(Uint16('/')));
        const Uint32 end = slash == PEG_NOT_FOUND ? text.size() : slash;
        out += "<NAMESPACE NAME=\"";
        appendEscaped(out, text.subString(begin, end - begin));
        out += "\"/>\n";
        begin = end + 1;
    }
    out += "</LOCALNAMESPACEPATH>\n";
}

void appendNamespacePath(Text& out, const String& host, const CIMNamespaceName& nameSpace) {
    out += "<NAMESPACEPATH>\n<HOST>";
    appendEscaped(out, host);
    out += "</HOST>\n";
    appendLocalNamespacePath(out, nameSpace);
    out += "</NAMESPACEPATH>\n";
}

void appendLocalInstancePath(Text& out, const CIMObjectPath& path) {
    out += "<LOCALINSTANCEPATH>\n";
    appendLocalNamespacePath(out, path.getNameSpace());
    appendInstanceName(out, path);
    out += "</LOCALINSTANCEPATH>\n";
}

void appendInstancePath(Text& out, const CIMObjectPath& path) {
    out += "<INSTANCEPATH>\n";
    appendNamespacePath(out, path.getHost(), path.getNameSpace());
    appendInstanceName(out, path);
    out += "</INSTANCEPATH>\n";
}

void appendClassName(Text& out, const CIMName& className) {
    out += "<CLASSNAME NAME=\"";
    appendName(out, className);
    out += "\"/>\n";
}

void appendLocalClassPath(Text& out, const CIMObjectPath& path) {
    out += "<LOCALCLASSPATH>\n";
    appendLocalNamespacePath(out, path.getNameSpace());
    appendClassName(out, path.getClassName());
    out += "</LOCALCLASSPATH>\n";
}

void appendClassPath(Text& out, const CIMObjectPath& path) {
    out += "<CLASSPATH>\n";
    appendNamespacePath(out, path.getHost(), path.getNameSpace());
    appendClassName(out, path.getClassName());
    out += "</CLASSPATH>\n";
}

void appendValueReference(Text& out, const CIMObjectPath& path) {
    out += "<VALUE.REFERENCE>\n";
    if (path.getHost().size() != 0) {
        appendInstancePath(out, path);
    } else if (!path.getNameSpace().isNull()) {
        appendLocalInstancePath(out, path);
    } else {
        appendInstanceName(out, path);
    }
    out += "</VALUE.REFERENCE>\n";
}

} // namespace Pegasus::Xml
