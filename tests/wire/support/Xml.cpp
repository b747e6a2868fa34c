#include "tests/wire/support/Xml.h"

namespace wire {

Xml escaped(const std::string& text) {
    Xml xml;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '&' || c == '<' || c == '>' || c == '"' || byte < ' ') {
            xml += "&#" + std::to_string(byte) + ";";
        } else {
            xml += c;
        }
    }
    return xml;
}

Xml value(const std::string& text) {
    return "<VALUE>" + escaped(text) + "</VALUE>";
}

Xml values(const std::vector<std::string>& texts) {
    Xml xml;
    for (const std::string& text : texts) {
        xml += value(text);
    }
    return "<VALUE.ARRAY>" + xml + "</VALUE.ARRAY>";
}

Xml classNamed(const std::string& name) {
    return "<CLASSNAME NAME=\"" + escaped(name) + "\"/>";
}

Xml instanceName(const std::string& className,
                 const std::vector<std::pair<std::string, std::string>>& keys) {
    Xml xml;
    for (const auto& [name, text] : keys) {
        xml += "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE VALUETYPE=\"string\">" + escaped(text) +
               "</KEYVALUE></KEYBINDING>";
    }
    return "<INSTANCENAME CLASSNAME=\"" + className + "\">" + xml + "</INSTANCENAME>";
}

Xml namedInstance(const Xml& instanceName, const std::string& className, const Xml& properties) {
    return "<VALUE.NAMEDINSTANCE>" + instanceName + "<INSTANCE CLASSNAME=\"" + className + "\">" +
           properties + "</INSTANCE></VALUE.NAMEDINSTANCE>";
}

Xml property(const std::string& name, const std::string& type, const std::string& text) {
    return "<PROPERTY NAME=\"" + name + "\" TYPE=\"" + type + "\">" + value(text) + "</PROPERTY>";
}

Xml reference(const Xml& instanceName) {
    return "<VALUE.REFERENCE>" + instanceName + "</VALUE.REFERENCE>";
}

Xml references(const std::vector<Xml>& instanceNames) {
    Xml xml;
    for (const Xml& each : instanceNames) {
        xml += reference(each);
    }
    return "<VALUE.REFARRAY>" + xml + "</VALUE.REFARRAY>";
}

} // namespace wire
