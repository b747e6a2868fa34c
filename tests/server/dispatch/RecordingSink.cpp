#include "tests/server/dispatch/RecordingSink.h"

using namespace Pegasus;

namespace smisd {
namespace {

template<class Object>
std::string objectText(const Object& object) {
    const std::string path = toUtf8(object.getPath().toString());
    const Uint32 at = object.findProperty(CIMName("Seen"));
    if (at == PEG_NOT_FOUND) {
        return path;
    }
    const CIMConstProperty seen = object.getProperty(at);
    return seen.getValue().isNull() ? path : path + " | " + toUtf8(seen.getValue().toString());
}

std::string typeText(const CIMValue& value) {
    return std::string(cimTypeToString(value.getType())) + (value.isArray() ? "[]" : "");
}

std::string valueText(const CIMValue& value) {
    return typeText(value) + " " + (value.isNull() ? "null" : toUtf8(value.toString()));
}

} // namespace

void RecordingSink::limitProperties(const CIMPropertyList& list) {
    std::string line = "limit";
    for (Uint32 i = 0; i < list.size(); ++i) {
        line += " " + toUtf8(list[i].getString());
    }
    lines.push_back(line);
}

void RecordingSink::includeClassOrigin() {
    lines.push_back("origin");
}

void RecordingSink::instance(const CIMInstance& instance) {
    lines.push_back("instance " + objectText(CIMConstInstance(instance)));
}

void RecordingSink::namedInstance(const CIMInstance& instance) {
    lines.push_back("named " + objectText(CIMConstInstance(instance)));
}

void RecordingSink::instanceName(const CIMObjectPath& path) {
    lines.push_back("name " + toUtf8(path.toString()));
}

void RecordingSink::objectWithPath(const CIMObject& object) {
    lines.push_back((object.isClass() ? "class " : "object ") + objectText(CIMConstObject(object)));
    if (object.isClass()) {
        classes.emplace_back(object);
    }
}

void RecordingSink::objectPath(const CIMObjectPath& path) {
    lines.push_back("path " + toUtf8(path.toString()));
}

void RecordingSink::instanceWithPath(const CIMObjectPath& path, const CIMInstance& instance) {
    lines.push_back("instance of " + toUtf8(path.toString()) + " is " +
                    objectText(CIMConstInstance(instance)));
}

void RecordingSink::instancePath(const CIMObjectPath& path) {
    lines.push_back("instance path " + toUtf8(path.toString()));
}

void RecordingSink::returnValue(const CIMValue& value) {
    lines.push_back("return " + valueText(value));
}

void RecordingSink::outParameter(const CIMParamValue& parameter) {
    lines.push_back("out " + toUtf8(parameter.getParameterName()) + " " +
                    (parameter.isTyped() ? "typed " : "untyped ") +
                    valueText(parameter.getValue()));
}

void RecordingSink::classDeclaration(const CIMClass& declaration) {
    lines.push_back("class " + toUtf8(declaration.getClassName().getString()));
    classes.push_back(declaration);
}

void RecordingSink::className(const CIMName& name) {
    lines.push_back("class " + toUtf8(name.getString()));
}

void RecordingSink::qualifier(const QualifierDeclaration& qualifier) {
    lines.push_back("qualifier " + toUtf8(qualifier.name.getString()));
}

} // namespace smisd
