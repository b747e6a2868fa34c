#include "server/cimxml/IntrinsicMethods.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <vector>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "server/cimxml/ElementReaders.h"
#include "server/cimxml/IntrinsicParameters.h"
#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

// What a parameter that is missing gets: nothing, an error that names it in one of two ways, or one
// without text.
enum class Need { optional, required, requiredInput, requiredUnnamed };

struct Parameter {
    const char* name;
    Need need;
    void (*read)(Element& value, Operation& operation);
};

struct Method {
    const char* name;
    Operation (*make)(const CIMNamespaceName& nameSpace);
    std::vector<Parameter> parameters;
};

template<class T>
Method method(const char* methodName, std::vector<Parameter> parameters) {
    return {methodName,
            [](const CIMNamespaceName& nameSpace) {
                T operation;
                operation.nameSpace = nameSpace;
                return Operation(operation);
            },
            std::move(parameters)};
}

using enum Need;
using namespace parameter;

// Opens an enumeration: its own parameters, and those that all have.
template<class T>
Method open(const char* methodName, std::vector<Parameter> parameters) {
    const Parameter common[] = {
        {"FilterQueryLanguage", optional, text<&OpenEnumeration::filterQueryLanguage>},
        {"FilterQuery", optional, text<&OpenEnumeration::filterQuery>},
        {"OperationTimeout", optional, number<&OpenEnumeration::operationTimeout>},
        {"ContinueOnError", optional, flag<&OpenEnumeration::continueOnError>},
        {"MaxObjectCount", optional, number<&OpenEnumeration::maxObjectCount>}};
    parameters.insert(parameters.end(), std::begin(common), std::end(common));
    return {methodName,
            [](const CIMNamespaceName& nameSpace) {
                T enumeration;
                enumeration.nameSpace = nameSpace;
                OpenEnumeration operation;
                operation.nameSpace = nameSpace;
                operation.enumeration = enumeration;
                return Operation(operation);
            },
            std::move(parameters)};
}

template<Pulled pulled>
Method pull(const char* methodName) {
    return {methodName,
            [](const CIMNamespaceName& nameSpace) {
                PullEnumeration operation;
                operation.nameSpace = nameSpace;
                operation.pulled = pulled;
                return Operation(operation);
            },
            {{"EnumerationContext", required, requiredText<&PullEnumeration::context>},
             {"MaxObjectCount", required, number<&PullEnumeration::maxObjectCount>}}};
}

// clang-format off
const Method methods[] = {
    method<GetInstance>("GetInstance", {
        {"InstanceName", requiredUnnamed, instanceName<&GetInstance::instanceName>},
        {"LocalOnly", optional, flag<&GetInstance::localOnly>},
        {"IncludeQualifiers", optional, flag<&GetInstance::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&GetInstance::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&GetInstance::propertyList>}}),
    method<EnumerateInstances>("EnumerateInstances", {
        {"ClassName", required, className<&EnumerateInstances::className>},
        {"DeepInheritance", optional, flag<&EnumerateInstances::deepInheritance>},
        {"LocalOnly", optional, flag<&EnumerateInstances::localOnly>},
        {"IncludeQualifiers", optional, flag<&EnumerateInstances::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&EnumerateInstances::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&EnumerateInstances::propertyList>}}),
    method<EnumerateInstanceNames>("EnumerateInstanceNames", {
        {"ClassName", required, className<&EnumerateInstanceNames::className>}}),
    method<CreateInstance>("CreateInstance", {
        {"NewInstance", required, instance<&CreateInstance::newInstance>}}),
    method<ModifyInstance>("ModifyInstance", {
        {"ModifiedInstance", required, namedInstance<&ModifyInstance::modifiedInstance>},
        {"IncludeQualifiers", optional, flag<&ModifyInstance::includeQualifiers>},
        {"PropertyList", optional, propertyList<&ModifyInstance::propertyList>}}),
    method<DeleteInstance>("DeleteInstance", {
        {"InstanceName", requiredUnnamed, instanceName<&DeleteInstance::instanceName>}}),
    method<GetProperty>("GetProperty", {
        {"InstanceName", requiredUnnamed, instanceName<&GetProperty::instanceName>},
        {"PropertyName", requiredUnnamed, name<&GetProperty::propertyName>}}),
    method<SetProperty>("SetProperty", {
        {"InstanceName", requiredUnnamed, instanceName<&SetProperty::instanceName>},
        {"PropertyName", requiredUnnamed, name<&SetProperty::propertyName>},
        {"NewValue", optional, anyValue<&SetProperty::newValue>}}),
    method<Associators>("Associators", {
        {"ObjectName", required, objectName<Associators>},
        {"AssocClass", optional, classNameOrNull<&Associators::assocClass>},
        {"ResultClass", optional, classNameOrNull<&Associators::resultClass>},
        {"Role", optional, text<&Associators::role>},
        {"ResultRole", optional, text<&Associators::resultRole>},
        {"IncludeQualifiers", optional, flag<&Associators::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&Associators::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&Associators::propertyList>}}),
    method<AssociatorNames>("AssociatorNames", {
        {"ObjectName", required, objectName<AssociatorNames>},
        {"AssocClass", optional, classNameOrNull<&AssociatorNames::assocClass>},
        {"ResultClass", optional, classNameOrNull<&AssociatorNames::resultClass>},
        {"Role", optional, text<&AssociatorNames::role>},
        {"ResultRole", optional, text<&AssociatorNames::resultRole>}}),
    method<References>("References", {
        {"ObjectName", required, objectName<References>},
        {"ResultClass", optional, classNameOrNull<&References::resultClass>},
        {"Role", optional, text<&References::role>},
        {"IncludeQualifiers", optional, flag<&References::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&References::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&References::propertyList>}}),
    method<ReferenceNames>("ReferenceNames", {
        {"ObjectName", required, objectName<ReferenceNames>},
        {"ResultClass", optional, classNameOrNull<&ReferenceNames::resultClass>},
        {"Role", optional, text<&ReferenceNames::role>}}),
    open<EnumerateInstances>("OpenEnumerateInstances", {
        {"ClassName", required, className<&EnumerateInstances::className>},
        {"DeepInheritance", optional, flag<&EnumerateInstances::deepInheritance>},
        {"IncludeQualifiers", optional, flag<&EnumerateInstances::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&EnumerateInstances::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&EnumerateInstances::propertyList>}}),
    open<EnumerateInstanceNames>("OpenEnumerateInstancePaths", {
        {"ClassName", required, className<&EnumerateInstanceNames::className>}}),
    open<Associators>("OpenAssociatorInstances", {
        {"InstanceName", required, sourceInstance<Associators>},
        {"AssocClass", optional, classNameOrNull<&Associators::assocClass>},
        {"ResultClass", optional, classNameOrNull<&Associators::resultClass>},
        {"Role", optional, text<&Associators::role>},
        {"ResultRole", optional, text<&Associators::resultRole>},
        {"IncludeClassOrigin", optional, flag<&Associators::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&Associators::propertyList>}}),
    open<AssociatorNames>("OpenAssociatorInstancePaths", {
        {"InstanceName", required, sourceInstance<AssociatorNames>},
        {"AssocClass", optional, classNameOrNull<&AssociatorNames::assocClass>},
        {"ResultClass", optional, classNameOrNull<&AssociatorNames::resultClass>},
        {"Role", optional, text<&AssociatorNames::role>},
        {"ResultRole", optional, text<&AssociatorNames::resultRole>}}),
    open<References>("OpenReferenceInstances", {
        {"InstanceName", required, sourceInstance<References>},
        {"ResultClass", optional, classNameOrNull<&References::resultClass>},
        {"Role", optional, text<&References::role>},
        {"IncludeClassOrigin", optional, flag<&References::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&References::propertyList>}}),
    open<ReferenceNames>("OpenReferenceInstancePaths", {
        {"InstanceName", required, sourceInstance<ReferenceNames>},
        {"ResultClass", optional, classNameOrNull<&ReferenceNames::resultClass>},
        {"Role", optional, text<&ReferenceNames::role>}}),
    pull<Pulled::instancesWithPath>("PullInstancesWithPath"),
    pull<Pulled::instancePaths>("PullInstancePaths"),
    pull<Pulled::instances>("PullInstances"),
    method<CloseEnumeration>("CloseEnumeration", {
        {"EnumerationContext", requiredInput, requiredText<&CloseEnumeration::context>}}),
    method<CountEnumeration>("EnumerationCount", {
        {"EnumerationContext", requiredInput, requiredText<&CountEnumeration::context>}}),
    method<GetClass>("GetClass", {
        {"ClassName", required, className<&GetClass::className>},
        {"LocalOnly", optional, flag<&GetClass::localOnly>},
        {"IncludeQualifiers", optional, flag<&GetClass::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&GetClass::includeClassOrigin>},
        {"PropertyList", optional, propertyList<&GetClass::propertyList>}}),
    method<EnumerateClasses>("EnumerateClasses", {
        {"ClassName", optional, classNameOrNull<&EnumerateClasses::className>},
        {"DeepInheritance", optional, flag<&EnumerateClasses::deepInheritance>},
        {"LocalOnly", optional, flag<&EnumerateClasses::localOnly>},
        {"IncludeQualifiers", optional, flag<&EnumerateClasses::includeQualifiers>},
        {"IncludeClassOrigin", optional, flag<&EnumerateClasses::includeClassOrigin>}}),
    method<EnumerateClassNames>("EnumerateClassNames", {
        {"ClassName", optional, classNameOrNull<&EnumerateClassNames::className>},
        {"DeepInheritance", optional, flag<&EnumerateClassNames::deepInheritance>}}),
    method<GetQualifier>("GetQualifier", {
        {"QualifierName", requiredUnnamed, name<&GetQualifier::qualifierName>}}),
    method<EnumerateQualifiers>("EnumerateQualifiers", {}),
};
// clang-format on

// Known, but nothing here stores classes, qualifiers or answers queries.
const char* const unsupportedMethods[] = {"CreateClass",       "ModifyClass",  "DeleteClass",
                                          "DeleteQualifier",   "SetQualifier", "ExecQuery",
                                          "OpenQueryInstances"};

template<class Range, class NameOf>
auto findNamed(const Range& range, const std::string& wanted, NameOf nameOf) {
    const String text = fromUtf8(wanted);
    return std::find_if(std::begin(range), std::end(range), [&](const auto& entry) {
        return String::equalNoCase(nameOf(entry), text);
    });
}

const Method& methodNamed(const std::string& wanted) {
    const auto found = findNamed(methods, wanted, [](const Method& entry) { return entry.name; });
    if (found != std::end(methods)) {
        return *found;
    }
    const auto unsupported =
        findNamed(unsupportedMethods, wanted, [](const char* entry) { return entry; });
    throw CIMException(CIM_ERR_NOT_SUPPORTED,
                       unsupported != std::end(unsupportedMethods)
                           ? String()
                           : fromUtf8("Unrecognized intrinsic method: " + wanted));
}

const Parameter& parameterNamed(const Method& method, const std::string& wanted) {
    const auto found =
        findNamed(method.parameters, wanted, [](const Parameter& entry) { return entry.name; });
    if (found == method.parameters.end()) {
        throw CIMException(
            CIM_ERR_NOT_SUPPORTED,
            fromUtf8("Unrecognized or invalid request input parameter \"" + wanted + "\""));
    }
    return *found;
}

String complaintAbout(const Parameter& parameter) {
    const std::string name(parameter.name);
    switch (parameter.need) {
    case required:
        return fromUtf8("Required parameter \"" + name + "\" missing from request.");
    case requiredInput:
        return fromUtf8("The " + name + " input parameter is required.");
    default:
        return String();
    }
}

void requireAll(const Method& method, const std::set<const Parameter*>& given) {
    for (const Parameter& parameter : method.parameters) {
        if (parameter.need != optional && !given.contains(&parameter)) {
            throw CIMException(CIM_ERR_INVALID_PARAMETER, complaintAbout(parameter));
        }
    }
}

} // namespace

Operation readIntrinsicCall(Element call, const std::string& methodName,
                            const CIMNamespaceName& nameSpace) {
    const Method& method = methodNamed(methodName);
    Operation operation = method.make(nameSpace);
    std::set<const Parameter*> given;
    while (auto value = call.take("IPARAMVALUE")) {
        const Parameter& parameter =
            parameterNamed(method, value->requiredAttribute("NAME", "Missing"));
        parameter.read(*value, operation);
        value->end();
        if (!given.insert(&parameter).second) {
            throw CIMException(CIM_ERR_INVALID_PARAMETER, "Duplicated request input parameter.");
        }
    }
    requireAll(method, given);
    call.end();
    return operation;
}

} // namespace smisd
