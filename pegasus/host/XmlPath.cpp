// Object paths

#include <host/XmlText.h>

namespace Pegasus::Xml {

static void appendKeyValue(std::string& out, const CIMKeyBinding& key) {
    if (key.getType() == CIMKeyBinding::REFERENCE) {
        appendValueReference(out, CIMObjectPath(key.getValue()));
        return;
    }
    const std::string_view type = key.getType() == CIMKeyBinding::BOOLEAN   ? "boolean"
                                  : key.getType() == CIMKeyBinding::NUMERIC ? "numeric"
                                                                            : "string";
    out += "<KEYVALUE ";
    appendPlainAttribute(out, "VALUETYPE", type);
    out += '>';
    appendEscaped(out, key.getValue());
    out += "</KEYVALUE>\n";
}

void appendInstanceName(std::string& out, const CIMObjectPath& path) {
    out += "<INSTANCENAME ";
    appendAttribute(out, "CLASSNAME", path.getClassName().getString());
    out += ">\n";
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        out += "<KEYBINDING ";
        appendAttribute(out, "NAME", keys[i].getName().getString());
        out += ">\n";
        appendKeyValue(out, keys[i]);
        out += "</KEYBINDING>\n";
    }
    out += "</INSTANCENAME>\n";
}

void appendLocalNamespacePath(std::string& out, const CIMNamespaceName& nameSpace) {
    out += "<LOCALNAMESPACEPATH>\n";
    const String& text = nameSpace.getString();
    for (Uint32 begin = 0; begin < text.size();) {
        const Uint32 slash = text.find(begin, Char16(Uint16('/')));
        const Uint32 end = slash == PEG_NOT_FOUND ? text.size() : slash;
        out += "<NAMESPACE ";
        appendAttribute(out, "NAME", text.subString(begin, end - begin));
        out += "/>\n";
        begin = end + 1;
    }
    out += "</LOCALNAMESPACEPATH>\n";
}

void appendNamespacePath(std::string& out, const String& host, const CIMNamespaceName& nameSpace) {
    out += "<NAMESPACEPATH>\n";
    appendElement(out, "HOST", host);
    appendLocalNamespacePath(out, nameSpace);
    out += "</NAMESPACEPATH>\n";
}

void appendLocalInstancePath(std::string& out, const CIMObjectPath& path) {
    out += "<LOCALINSTANCEPATH>\n";
    appendLocalNamespacePath(out, path.getNameSpace());
    appendInstanceName(out, path);
    out += "</LOCALINSTANCEPATH>\n";
}

void appendInstancePath(std::string& out, const CIMObjectPath& path) {
    out += "<INSTANCEPATH>\n";
    appendNamespacePath(out, path.getHost(), path.getNameSpace());
    appendInstanceName(out, path);
    out += "</INSTANCEPATH>\n";
}

void appendClassName(std::string& out, const CIMName& className) {
    out += "<CLASSNAME ";
    appendAttribute(out, "NAME", className.getString());
    out += "/>\n";
}

void appendLocalClassPath(std::string& out, const CIMObjectPath& path) {
    out += "<LOCALCLASSPATH>\n";
    appendLocalNamespacePath(out, path.getNameSpace());
    appendClassName(out, path.getClassName());
    out += "</LOCALCLASSPATH>\n";
}

void appendClassPath(std::string& out, const CIMObjectPath& path) {
    out += "<CLASSPATH>\n";
    appendNamespacePath(out, path.getHost(), path.getNameSpace());
    appendClassName(out, path.getClassName());
    out += "</CLASSPATH>\n";
}

void appendValueReference(std::string& out, const CIMObjectPath& path) {
    out += "<VALUE.REFERENCE>\n";
    if (path.getHost().size() != 0)
        appendInstancePath(out, path);
    else if (!path.getNameSpace().isNull())
        appendLocalInstancePath(out, path);
    else
        appendInstanceName(out, path);
    out += "</VALUE.REFERENCE>\n";
}

} // namespace Pegasus::Xml
