// Walks along associations from a class: the schema answers them.

#include <algorithm>
#include <vector>

#include "server/dispatch/Operations.h"
#include "server/schema/ClassView.h"

using namespace Pegasus;

namespace smisd {
namespace {

// An absent role matches any.
bool matches(const String& role, const CIMName& name) {
    return role.size() == 0 || String::equalNoCase(role, name.getString());
}

// A null class matches any, else the class and its subclasses.
bool matches(const Schema& schema, const CIMName& wanted, const CIMName& name) {
    return wanted.isNull() || schema.isA(name, wanted);
}

void addOnce(std::vector<CIMName>& names, const CIMName& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
}

// For Associators and AssociatorNames.
template<class Operation>
std::vector<CIMName> ends(const Operation& operation, const Schema& schema) {
    for (const CIMName& name : {operation.assocClass, operation.resultClass}) {
        if (!name.isNull()) {
            requireClass(schema, name, CIM_ERR_INVALID_CLASS);
        }
    }
    std::vector<CIMName> result;
    for (const Link& link : schema.linksFrom(operation.objectName.getClassName())) {
        if (matches(schema, operation.assocClass, link.association) &&
            matches(schema, operation.resultClass, link.toClass) &&
            matches(operation.role, link.fromRole) && matches(operation.resultRole, link.toRole)) {
            addOnce(result, link.toClass);
        }
    }
    return result;
}

// For References and ReferenceNames.
template<class Operation>
std::vector<CIMName> associations(const Operation& operation, const Schema& schema) {
    if (!operation.resultClass.isNull()) {
        requireClass(schema, operation.resultClass, CIM_ERR_INVALID_PARAMETER);
    }
    std::vector<CIMName> result;
    for (const Link& link : schema.linksFrom(operation.objectName.getClassName())) {
        if (matches(schema, operation.resultClass, link.association) &&
            matches(operation.role, link.fromRole)) {
            addOnce(result, link.association);
        }
    }
    return result;
}

template<class Operation>
void deliverClasses(const std::vector<CIMName>& names, const Operation& operation,
                    const Schema& schema, const Request& request) {
    for (const CIMName& name : names) {
        CIMClass found =
            viewOf(*schema.findClass(name), {false, operation.includeQualifiers,
                                             operation.includeClassOrigin, operation.propertyList});
        found.setPath(
            CIMObjectPath(request.server.hostName, operation.nameSpace, found.getClassName()));
        request.sink.objectWithPath(CIMObject(found));
    }
}

void deliverNames(const std::vector<CIMName>& names, const CIMNamespaceName& nameSpace,
                  const Request& request) {
    for (const CIMName& name : names) {
        request.sink.objectPath(CIMObjectPath(request.server.hostName, nameSpace, name));
    }
}

} // namespace

void associatedClasses(const Associators& operation, const Request& request) {
    const Schema& schema = requireNamespace(request, operation.nameSpace);
    deliverClasses(ends(operation, schema), operation, schema, request);
}

void associatedClassNames(const AssociatorNames& operation, const Request& request) {
    const Schema& schema = requireNamespace(request, operation.nameSpace);
    deliverNames(ends(operation, schema), operation.nameSpace, request);
}

void referencingClasses(const References& operation, const Request& request) {
    const Schema& schema = requireNamespace(request, operation.nameSpace);
    deliverClasses(associations(operation, schema), operation, schema, request);
}

void referencingClassNames(const ReferenceNames& operation, const Request& request) {
    const Schema& schema = requireNamespace(request, operation.nameSpace);
    deliverNames(associations(operation, schema), operation.nameSpace, request);
}

} // namespace smisd
