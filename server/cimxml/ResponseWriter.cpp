#include "server/cimxml/ResponseWriter.h"

#include <type_traits>
#include <utility>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/CIMType.h>

#include "server/operation/Utf8.h"

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

constexpr unsigned resultsPerPiece = 100;

const char* responseElement(const MessageHead& head) {
    return head.intrinsic ? "IMETHODRESPONSE" : "METHODRESPONSE";
}

Text startOf(const MessageHead& head) {
    Text text;
    text += "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
            "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n<MESSAGE ID=\"";
    Xml::appendEscaped(text, std::string_view(head.messageId));
    text += "\" PROTOCOLVERSION=\"1.0\">\n<SIMPLERSP>\n<";
    text += responseElement(head);
    text += " NAME=\"";
    Xml::appendEscaped(text, std::string_view(head.methodName));
    text += "\">\n";
    return text;
}

std::string endOf(const MessageHead& head) {
    return std::string("</") + responseElement(head) + ">\n</SIMPLERSP>\n</MESSAGE>\n</CIM>\n";
}

// Which parts of an instance the operation wants.
Xml::Parts partsOf(const Operation& operation) {
    return std::visit(
        [](const auto& typed) {
            using T = std::decay_t<decltype(typed)>;
            Xml::Parts parts;
            if constexpr (std::is_same_v<T, GetInstance> || std::is_same_v<T, EnumerateInstances> ||
                          std::is_same_v<T, Associators> || std::is_same_v<T, References>) {
                parts.qualifiers = typed.includeQualifiers;
                parts.classOrigin = typed.includeClassOrigin;
                parts.properties = typed.propertyList;
            } else if constexpr (std::is_same_v<T, OpenEnumeration> ||
                                 std::is_same_v<T, PullEnumeration>) {
                parts.qualifiers = false;
                parts.classOrigin = false;
            }
            return parts;
        },
        operation);
}

bool isOfClass(const Operation& operation) {
    return std::visit(
        [](const auto& typed) {
            if constexpr (requires { typed.ofClass; }) {
                return typed.ofClass;
            } else {
                return false;
            }
        },
        operation);
}

} // namespace

ResponseWriter::ResponseWriter(const MessageHead& head, const Operation& operation, Flush flush,
                               MemoryBudget::Reservation* memory)
    : _head(head), _flush(std::move(flush)), _memory(memory), _ofClass(isOfClass(operation)),
      _parts(partsOf(operation)), _text(startOf(head)) {}

std::string ResponseWriter::finish() {
    if (_hasResults) {
        _text += "</IRETURNVALUE>\n";
    }
    _text += _outParameters.view();
    _text += endOf(_head);
    return std::string(_text.view());
}

std::string ResponseWriter::finishAfterError() {
    if (!_flushed) {
        return std::string(startOf(_head).view()) + endOf(_head);
    }
    return "</IRETURNVALUE>\n" + endOf(_head);
}

// Appends one result of an intrinsic method.
template<class Append>
void ResponseWriter::add(Append append) {
    if (!std::exchange(_hasResults, true)) {
        _text += "<IRETURNVALUE>\n";
    }
    append(_text);
    hold();
    flushIfDue();
}

// A text that grows is copied, and again when it is sent.
void ResponseWriter::hold() {
    constexpr std::size_t copies = 3;
    while (_memory && _text.size() > _heldFor) {
        if (!_memory->grow(copies * _heldFor)) {
            throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED,
                               String("There is no memory for the answer."));
        }
        _heldFor *= 2;
    }
}

void ResponseWriter::flushIfDue() {
    if (++_pendingCount < resultsPerPiece || !_flush) {
        return;
    }
    _pendingCount = 0;
    _flushed = true;
    _flush(_text.view());
    _text.clear();
}

void ResponseWriter::limitProperties(const CIMPropertyList& properties) {
    _parts.properties = properties;
}

void ResponseWriter::includeClassOrigin() {
    _parts.classOrigin = true;
}

void ResponseWriter::instance(const CIMInstance& instance) {
    add([&](Text& out) { Xml::appendInstance(out, instance, _parts); });
}

void ResponseWriter::namedInstance(const CIMInstance& instance) {
    add([&](Text& out) {
        out += "<VALUE.NAMEDINSTANCE>\n";
        Xml::appendInstanceName(out, instance.getPath());
        Xml::appendInstance(out, instance, _parts);
        out += "</VALUE.NAMEDINSTANCE>\n";
    });
}

void ResponseWriter::instanceName(const CIMObjectPath& path) {
    add([&](Text& out) { Xml::appendInstanceName(out, path); });
}

void ResponseWriter::objectWithPath(const CIMObject& object) {
    add([&](Text& out) {
        out += "<VALUE.OBJECTWITHPATH>\n";
        if (object.isClass()) {
            Xml::appendClassPath(out, object.getPath());
        } else {
            Xml::appendInstancePath(out, object.getPath());
        }
        Xml::appendObject(out, object, _parts);
        out += "</VALUE.OBJECTWITHPATH>\n";
    });
}

void ResponseWriter::objectPath(const CIMObjectPath& path) {
    add([&](Text& out) {
        out += "<OBJECTPATH>\n";
        if (_ofClass) {
            Xml::appendClassPath(out, path);
        } else {
            Xml::appendInstancePath(out, path);
        }
        out += "</OBJECTPATH>\n";
    });
}

void ResponseWriter::instanceWithPath(const CIMObjectPath& path, const CIMInstance& instance) {
    add([&](Text& out) {
        out += "<VALUE.INSTANCEWITHPATH>\n";
        Xml::appendInstancePath(out, path);
        Xml::appendInstance(out, instance, _parts);
        out += "</VALUE.INSTANCEWITHPATH>\n";
    });
}

void ResponseWriter::instancePath(const CIMObjectPath& path) {
    add([&](Text& out) { Xml::appendInstancePath(out, path); });
}

void ResponseWriter::returnValue(const CIMValue& value) {
    if (!_head.intrinsic) {
        Xml::appendReturnValue(_text, value);
    } else if (!value.isNull()) {
        add([&](Text& out) { Xml::appendValue(out, value); });
    }
}

void ResponseWriter::outParameter(const CIMParamValue& parameter) {
    Xml::appendParamValue(_outParameters, parameter);
}

void ResponseWriter::classDeclaration(const CIMClass& declaration) {
    add([&](Text& out) { Xml::appendClass(out, declaration); });
}

void ResponseWriter::className(const CIMName& name) {
    add([&](Text& out) { Xml::appendClassName(out, name); });
}

void ResponseWriter::qualifier(const QualifierDeclaration& declaration) {
    add([&](Text& out) { appendQualifierDeclaration(out, declaration); });
}

std::string errorBody(const MessageHead& head, const CIMException& error) {
    Text text = startOf(head);
    text.append("<ERROR CODE=\"").append(std::to_string(error.getCode()));
    text += "\" DESCRIPTION=\"";
    Xml::appendEscaped(text, std::string_view(errorDescription(error)));
    text.append("\"/>").append(endOf(head));
    return std::string(text.view());
}

std::string errorDescription(const CIMException& error) {
    const CIMStatusCode code = error.getCode();
    std::string text = cimStatusCodeToString(code);
    if (!text.starts_with("CIM_ERR_")) {
        text += " \"" + std::to_string(code) + "\"";
    }
    const std::string message = toUtf8(error.getMessage());
    return message.empty() ? text : text + ": " + message;
}

} // namespace smisd
