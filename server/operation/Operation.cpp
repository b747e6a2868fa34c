#include "server/operation/Operation.h"

using namespace Pegasus;

namespace smisd {
namespace {

struct Description {
    const char* name;
    OperationKind kind;
};

using enum OperationKind;

// In the order of Operation.
constexpr Description descriptions[] = {
    // instances
    {"GetInstance", read},
    {"EnumerateInstances", read},
    {"EnumerateInstanceNames", read},
    {"ModifyInstance", change},
    {"CreateInstance", change},
    {"DeleteInstance", change},
    {"GetProperty", read},
    {"SetProperty", change},
    // associations
    {"Associators", read},
    {"AssociatorNames", read},
    {"References", read},
    {"ReferenceNames", read},
    // pulled enumerations, of which the first two have several names
    {nullptr, read},
    {nullptr, read},
    {"CloseEnumeration", read},
    {"EnumerationCount", read},
    // extrinsic methods
    {"InvokeMethod", change},
    // schema
    {"GetClass", schema},
    {"EnumerateClasses", schema},
    {"EnumerateClassNames", schema},
    {"GetQualifier", schema},
    {"EnumerateQualifiers", schema},
};
static_assert(std::size(descriptions) == std::variant_size_v<Operation>);

// In the order of Enumeration.
constexpr const char* openNames[] = {
    "OpenEnumerateInstances",      "OpenEnumerateInstancePaths", "OpenAssociatorInstances",
    "OpenAssociatorInstancePaths", "OpenReferenceInstances",     "OpenReferenceInstancePaths",
};
static_assert(std::size(openNames) == std::variant_size_v<Enumeration>);

const char* nameOf(Pulled pulled) {
    switch (pulled) {
    case Pulled::instancesWithPath:
        return "PullInstancesWithPath";
    case Pulled::instancePaths:
        return "PullInstancePaths";
    case Pulled::instances:
        return "PullInstances";
    }
    return "";
}

template<class One>
CIMObjectPath pathOf(const One& one) {
    if constexpr (requires { one.instanceName; }) {
        return one.instanceName;
    } else if constexpr (requires { one.objectName; }) {
        return one.objectName;
    } else if constexpr (requires { one.modifiedInstance; }) {
        return one.modifiedInstance.getPath();
    } else if constexpr (requires { one.newInstance; }) {
        return CIMObjectPath(String(), CIMNamespaceName(), one.newInstance.getClassName());
    } else if constexpr (requires { one.enumeration; }) {
        return std::visit([](const auto& enumeration) { return pathOf(enumeration); },
                          one.enumeration);
    } else if constexpr (requires { one.className; }) {
        return CIMObjectPath(String(), CIMNamespaceName(), one.className);
    } else {
        return CIMObjectPath();
    }
}

} // namespace

const char* nameOf(const Operation& operation) {
    if (const auto* open = std::get_if<OpenEnumeration>(&operation)) {
        return openNames[open->enumeration.index()];
    }
    if (const auto* pull = std::get_if<PullEnumeration>(&operation)) {
        return nameOf(pull->pulled);
    }
    return descriptions[operation.index()].name;
}

OperationKind kindOf(const Operation& operation) {
    return descriptions[operation.index()].kind;
}

CIMObjectPath objectOf(const Operation& operation) {
    return std::visit(
        [](const auto& one) {
            CIMObjectPath path = pathOf(one);
            path.setNameSpace(one.nameSpace);
            return path;
        },
        operation);
}

} // namespace smisd
