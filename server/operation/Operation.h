// The CIM operations that the server carries out, as plain structs.
//
// The decoder fills them from a request, the dispatcher carries them out, and the back end of
// CIMOMHandle builds them for providers that call back into the server. A default is the one that
// DMTF DSP0200 states for an absent parameter.
//
// Paths are as the client sent them: class and keys, without host or namespace; `nameSpace` holds
// for the whole operation. Names keep the client's spelling.
// A null name, a null property list or an empty role stands for an absent parameter.
//
// Plain values: copy them freely, share them between threads once they no longer change.
#pragma once

#include <optional>
#include <variant>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

namespace smisd {

// Instances

struct GetInstance {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath instanceName;
    bool localOnly = true;
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    Pegasus::CIMPropertyList propertyList;
};

struct EnumerateInstances {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMName className;
    bool deepInheritance = true;
    bool localOnly = true;
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    Pegasus::CIMPropertyList propertyList;
};

struct EnumerateInstanceNames {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMName className;
};

// The path of `modifiedInstance` has the keys.
struct ModifyInstance {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMInstance modifiedInstance;
    bool includeQualifiers = true;
    Pegasus::CIMPropertyList propertyList;
};

// The path of `newInstance` is its class alone.
struct CreateInstance {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMInstance newInstance;
};

struct DeleteInstance {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath instanceName;
};

struct GetProperty {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath instanceName;
    Pegasus::CIMName propertyName;
};

// A request does not say the type of the new value: when it comes from the wire it is a string, an
// array of strings or a reference, and the dispatcher gives it the property's declared type.
struct SetProperty {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath instanceName;
    Pegasus::CIMName propertyName;
    Pegasus::CIMValue newValue;
};

// Associations

// `ofClass` tells a class (CLASSNAME) from an instance that was sent without keys.

struct Associators {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath objectName;
    bool ofClass = false;
    Pegasus::CIMName assocClass;
    Pegasus::CIMName resultClass;
    Pegasus::String role;
    Pegasus::String resultRole;
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    Pegasus::CIMPropertyList propertyList;
};

struct AssociatorNames {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath objectName;
    bool ofClass = false;
    Pegasus::CIMName assocClass;
    Pegasus::CIMName resultClass;
    Pegasus::String role;
    Pegasus::String resultRole;
};

struct References {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath objectName;
    bool ofClass = false;
    Pegasus::CIMName resultClass;
    Pegasus::String role;
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    Pegasus::CIMPropertyList propertyList;
};

struct ReferenceNames {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath objectName;
    bool ofClass = false;
    Pegasus::CIMName resultClass;
    Pegasus::String role;
};

// Enumerations whose results are pulled in pieces (DSP0200, "Pulled enumeration operations")

using Enumeration = std::variant<EnumerateInstances, EnumerateInstanceNames, Associators,
                                 AssociatorNames, References, ReferenceNames>;

// The namespace is the enumeration's, too.
struct OpenEnumeration {
    Pegasus::CIMNamespaceName nameSpace;
    Enumeration enumeration;
    Pegasus::String filterQueryLanguage; // "" for an absent parameter
    Pegasus::String filterQuery;
    std::optional<Pegasus::Uint32> operationTimeout; // seconds
    bool continueOnError = false;
    Pegasus::Uint32 maxObjectCount = 0;
};

// What a pull wants; it must be what was opened. There are no queries, so nothing without a path.
enum class Pulled { instancesWithPath, instancePaths, instances };

struct PullEnumeration {
    Pegasus::CIMNamespaceName nameSpace;
    Pulled pulled = Pulled::instancesWithPath;
    Pegasus::String context;
    Pegasus::Uint32 maxObjectCount = 0;
};

struct CloseEnumeration {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::String context;
};

struct CountEnumeration {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::String context;
};

// Extrinsic methods

// A parameter with isTyped() false was sent without a type: its value is a string or an array of
// strings, and the dispatcher gives it the type that the class declares. A path without keys calls
// the method of the class.
struct InvokeMethod {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath objectName;
    Pegasus::CIMName methodName;
    Pegasus::Array<Pegasus::CIMParamValue> inParameters;
};

// Schema

// The elements that a qualifier may stand on (DSP0004, "Scope").
struct QualifierScope {
    bool onClass = false;
    bool onAssociation = false;
    bool onReference = false;
    bool onProperty = false;
    bool onMethod = false;
    bool onParameter = false;
    bool onIndication = false;
};

// `Qualifier Key : boolean = false, Scope(property), ...;`
//
// `value` is the default; a null one of the declared type where the declaration states none.
struct QualifierDeclaration {
    Pegasus::CIMName name;
    Pegasus::CIMValue value;
    QualifierScope scope;
    Pegasus::CIMFlavor flavor;
};

struct GetClass {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMName className;
    bool localOnly = true;
    bool includeQualifiers = true;
    bool includeClassOrigin = false;
    Pegasus::CIMPropertyList propertyList;
};

// A null class name stands for the classes without superclass.
struct EnumerateClasses {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMName className;
    bool deepInheritance = false;
    bool localOnly = true;
    bool includeQualifiers = true;
    bool includeClassOrigin = false;
};

struct EnumerateClassNames {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMName className;
    bool deepInheritance = false;
};

struct GetQualifier {
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMName qualifierName;
};

struct EnumerateQualifiers {
    Pegasus::CIMNamespaceName nameSpace;
};

using Operation =
    std::variant<GetInstance, EnumerateInstances, EnumerateInstanceNames, ModifyInstance,
                 CreateInstance, DeleteInstance, GetProperty, SetProperty, Associators,
                 AssociatorNames, References, ReferenceNames, OpenEnumeration, PullEnumeration,
                 CloseEnumeration, CountEnumeration, InvokeMethod, GetClass, EnumerateClasses,
                 EnumerateClassNames, GetQualifier, EnumerateQualifiers>;

// For those who judge and count operations without carrying them out

enum class OperationKind {
    read,   // instances, or properties of them
    change, // of instances; every extrinsic method counts as one
    schema, // reads declarations
};

// The name as DMTF DSP0200 gives it; "InvokeMethod" for an extrinsic method.
const char* nameOf(const Operation& operation);

OperationKind kindOf(const Operation& operation);

// The object that it addresses, with the operation's namespace: an instance, or a class alone.
// Without a class name for one on a whole namespace.
Pegasus::CIMObjectPath objectOf(const Operation& operation);

} // namespace smisd
