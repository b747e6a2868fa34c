// Operations on classes and qualifiers: the schema answers them.

#include "server/dispatch/Operations.h"
#include "server/schema/ClassView.h"

using namespace Pegasus;

namespace smisd {
namespace {

// The subclasses, or the classes without superclass of a null name.
std::vector<CIMName> classesBelow(const Schema& schema, const CIMName& className, bool deep) {
    if (!className.isNull()) {
        requireClass(schema, className, CIM_ERR_INVALID_CLASS);
    }
    return schema.subclasses(className, deep);
}

} // namespace

void carryOut(const GetClass& operation, const Request& request) {
    const CIMClass& found = requireClass(requireNamespace(request, operation.nameSpace),
                                         operation.className, CIM_ERR_NOT_FOUND);
    request.sink.classDeclaration(
        viewOf(found, {operation.localOnly, operation.includeQualifiers,
                       operation.includeClassOrigin, operation.propertyList}));
}

void carryOut(const EnumerateClasses& operation, const Request& request) {
    const Schema& schema = requireNamespace(request, operation.nameSpace);
    for (const CIMName& name :
         classesBelow(schema, operation.className, operation.deepInheritance)) {
        request.sink.classDeclaration(
            viewOf(*schema.findClass(name), {operation.localOnly, operation.includeQualifiers,
                                             operation.includeClassOrigin, CIMPropertyList()}));
    }
}

void carryOut(const EnumerateClassNames& operation, const Request& request) {
    const Schema& schema = requireNamespace(request, operation.nameSpace);
    for (const CIMName& name :
         classesBelow(schema, operation.className, operation.deepInheritance)) {
        request.sink.className(name);
    }
}

void carryOut(const GetQualifier& operation, const Request& request) {
    const QualifierDeclaration* found =
        requireNamespace(request, operation.nameSpace).findQualifier(operation.qualifierName);
    if (!found) {
        throw CIMException(CIM_ERR_NOT_FOUND, operation.qualifierName.getString());
    }
    request.sink.qualifier(*found);
}

void carryOut(const EnumerateQualifiers& operation, const Request& request) {
    for (const auto& [name, qualifier] :
         requireNamespace(request, operation.nameSpace).qualifiers()) {
        request.sink.qualifier(qualifier);
    }
}

} // namespace smisd
