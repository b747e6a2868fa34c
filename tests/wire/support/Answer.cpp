#include "tests/wire/support/Answer.h"

#include <regex>
#include <sstream>
#include <stdexcept>

namespace wire {
namespace {

// The body of a response in chunks.
std::string joined(std::string chunks) {
    std::string body;
    while (!chunks.empty()) {
        const std::size_t lineEnd = chunks.find("\r\n");
        const std::size_t size = std::stoul(chunks.substr(0, lineEnd), nullptr, 16);
        if (size == 0) {
            break;
        }
        body += chunks.substr(lineEnd + 2, size);
        chunks.erase(0, lineEnd + 2 + size + 2);
    }
    return body;
}

std::string trailing(const std::string& response, const std::string& header) {
    std::smatch found;
    const std::regex line("\r\n" + header + ": ([^\r]*)\r\n");
    return std::regex_search(response, found, line) ? found[1].str() : "";
}

// Namespaces are written as "root/snia".
std::string nameSpaceOf(const pugi::xml_node& path) {
    std::string text;
    for (const auto& part : path.select_nodes(".//LOCALNAMESPACEPATH/NAMESPACE")) {
        text += (text.empty() ? "" : "/") + std::string(part.node().attribute("NAME").value());
    }
    return text;
}

std::string textOf(const pugi::xml_node& path);

std::string keyTextOf(const pugi::xml_node& key) {
    const pugi::xml_node value = key.first_child();
    return std::string(key.attribute("NAME").value()) + "=" +
           (std::string(value.name()) == "KEYVALUE" ? "\"" + std::string(value.child_value()) + "\""
                                                    : "<" + textOf(value.first_child()) + ">");
}

// Of INSTANCEPATH, LOCALINSTANCEPATH or INSTANCENAME.
std::string textOf(const pugi::xml_node& path) {
    const pugi::xml_node name = path.select_node("descendant-or-self::INSTANCENAME").node();
    const std::string host = path.child("NAMESPACEPATH").child_value("HOST");
    std::string nameSpace;
    if (path != name) {
        nameSpace = nameSpaceOf(path.first_child()) + ":";
    }
    std::string text =
        (host.empty() ? "" : "//" + host + "/") + nameSpace + name.attribute("CLASSNAME").value();
    const char* separator = ".";
    for (const pugi::xml_node& key : name.children("KEYBINDING")) {
        text += separator + keyTextOf(key);
        separator = ",";
    }
    return text;
}

Xml xmlOf(const pugi::xml_node& node) {
    std::ostringstream xml;
    node.print(xml, "", pugi::format_raw);
    return xml.str();
}

// The text of a property: a value, values with commas between them, or a path.
std::string valueOf(const pugi::xml_node& property) {
    if (const pugi::xml_node path = property.child("VALUE.REFERENCE")) {
        return textOf(path.first_child());
    }
    std::string text;
    for (const auto& value : property.select_nodes(".//VALUE")) {
        text += (text.empty() ? "" : ",") + std::string(value.node().child_value());
    }
    return text;
}

} // namespace

Answer::Answer(const std::string& response) {
    const std::size_t headEnd = response.find("\r\n\r\n") + 4;
    const std::string head = response.substr(0, headEnd);
    if (!head.starts_with("HTTP/1.1 200 ")) {
        _error = head.substr(9, head.find("\r\n") - 9);
        return;
    }
    const bool chunked = head.find("transfer-encoding: chunked") != std::string::npos;
    const std::string rest = response.substr(headEnd);
    const std::string body = chunked ? joined(rest) : rest;
    if (!_document.load_buffer(body.data(), body.size())) {
        throw std::runtime_error("no XML: " + response);
    }
    _response = _document.select_node("/CIM/MESSAGE/SIMPLERSP/*").node();
    if (const pugi::xml_node error = _response.child("ERROR")) {
        _error = std::string(error.attribute("CODE").value()) + " " +
                 error.attribute("DESCRIPTION").value();
    } else if (chunked) {
        _error = trailing(rest, "CIMStatusCode");
        if (!_error.empty()) {
            _error += " " + trailing(rest, "CIMStatusCodeDescription");
        }
    }
}

std::string Answer::returnValue() const {
    const pugi::xml_node result = _response.child("RETURNVALUE");
    return result ? result.attribute("PARAMTYPE").value() + (" " + valueOf(result)) : "";
}

Xml Answer::outReference(const std::string& name) const {
    return xmlOf(_response
                     .select_node(("PARAMVALUE[@NAME='" + name +
                                   "'][@PARAMTYPE='reference']/VALUE.REFERENCE//INSTANCENAME")
                                      .c_str())
                     .node());
}

std::string Answer::outValue(const std::string& name) const {
    return _response.select_node(("PARAMVALUE[@NAME='" + name + "']/VALUE").c_str())
        .node()
        .child_value();
}

std::vector<pugi::xml_node> Answer::results() const {
    std::vector<pugi::xml_node> nodes;
    for (const pugi::xml_node& node : _response.child("IRETURNVALUE").children()) {
        if (node.type() == pugi::node_element) {
            nodes.push_back(node);
        }
    }
    return nodes;
}

std::vector<Xml> Answer::names() const {
    std::vector<Xml> names;
    for (const pugi::xml_node& result : results()) {
        names.push_back(xmlOf(result.select_node("descendant-or-self::INSTANCENAME").node()));
    }
    return names;
}

std::vector<std::string> Answer::paths() const {
    std::vector<std::string> paths;
    for (const pugi::xml_node& result : results()) {
        const pugi::xml_node path = result.select_node("descendant-or-self::INSTANCEPATH").node();
        paths.push_back(
            textOf(path ? path : result.select_node("descendant-or-self::INSTANCENAME").node()));
    }
    return paths;
}

std::vector<std::string> Answer::properties(std::size_t result) const {
    std::vector<std::string> lines;
    for (const auto& found : results().at(result).select_nodes("descendant-or-self::INSTANCE/*")) {
        const pugi::xml_node property = found.node();
        const std::string type = property.attribute("TYPE").value();
        lines.push_back(std::string(property.attribute("NAME").value()) +
                        (property.child("QUALIFIER") ? " [Key]: " : ": ") +
                        (type.empty() ? "reference" : type) + " " + valueOf(property));
    }
    return lines;
}

std::vector<std::string> Answer::each(const std::string& property) const {
    std::vector<std::string> texts;
    for (const pugi::xml_node& result : results()) {
        const std::string query = "descendant-or-self::INSTANCE/*[@NAME='" + property + "']";
        texts.push_back(valueOf(result.select_node(query.c_str()).node()));
    }
    return texts;
}

} // namespace wire
