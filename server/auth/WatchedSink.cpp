#include "server/auth/WatchedSink.h"

#include <Pegasus/Common/CIMType.h>

using namespace Pegasus;

namespace smisd {
namespace {

bool isInteger(const CIMValue& value) {
    switch (value.getType()) {
    case CIMTYPE_UINT8:
    case CIMTYPE_SINT8:
    case CIMTYPE_UINT16:
    case CIMTYPE_SINT16:
    case CIMTYPE_UINT32:
    case CIMTYPE_SINT32:
    case CIMTYPE_UINT64:
    case CIMTYPE_SINT64:
        return !value.isNull() && !value.isArray();
    default:
        return false;
    }
}

} // namespace

void WatchedSink::limitProperties(const CIMPropertyList& list) {
    _sink.limitProperties(list);
}

void WatchedSink::includeClassOrigin() {
    _sink.includeClassOrigin();
}

void WatchedSink::instance(const CIMInstance& instance) {
    _check(instance.getClassName());
    _sink.instance(instance);
}

void WatchedSink::namedInstance(const CIMInstance& instance) {
    _check(instance.getClassName());
    _sink.namedInstance(instance);
}

void WatchedSink::instanceName(const CIMObjectPath& path) {
    _check(path.getClassName());
    _sink.instanceName(path);
}

void WatchedSink::objectWithPath(const CIMObject& object) {
    if (object.isInstance()) {
        _check(object.getClassName());
    }
    _sink.objectWithPath(object);
}

// One without keys is that of a class.
void WatchedSink::objectPath(const CIMObjectPath& path) {
    if (path.getKeyBindings().size() > 0) {
        _check(path.getClassName());
    }
    _sink.objectPath(path);
}

void WatchedSink::instanceWithPath(const CIMObjectPath& path, const CIMInstance& instance) {
    _check(instance.getClassName());
    _sink.instanceWithPath(path, instance);
}

void WatchedSink::instancePath(const CIMObjectPath& path) {
    _check(path.getClassName());
    _sink.instancePath(path);
}

void WatchedSink::returnValue(const CIMValue& value) {
    if (isInteger(value)) {
        _returned = std::string(value.toString().getCString());
    }
    _sink.returnValue(value);
}

void WatchedSink::outParameter(const CIMParamValue& parameter) {
    _sink.outParameter(parameter);
}

void WatchedSink::classDeclaration(const CIMClass& declaration) {
    _sink.classDeclaration(declaration);
}

void WatchedSink::className(const CIMName& name) {
    _sink.className(name);
}

void WatchedSink::qualifier(const QualifierDeclaration& declaration) {
    _sink.qualifier(declaration);
}

} // namespace smisd
