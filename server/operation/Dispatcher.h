// Who carries operations out, for whom, and who receives the results.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/String.h>

#include "server/operation/Operation.h"

namespace smisd {

// What a user may do: a reader changes nothing and sees no secrets.
enum class Role { reader, administrator };

constexpr std::string_view nameOf(Role role) {
    return role == Role::reader ? "reader" : "administrator";
}

constexpr std::optional<Role> roleNamed(std::string_view name) {
    for (const Role role : {Role::reader, Role::administrator}) {
        if (nameOf(role) == name) {
            return role;
        }
    }
    return std::nullopt;
}

// What an operation needs to know of its request beside its parameters.
struct RequestContext {
    Pegasus::String userName;        // "" when authentication is off
    Pegasus::String acceptLanguage;  // text of the Accept-Language header, "" without one
    Pegasus::String contentLanguage; // text of the Content-Language header, "" without one
    Role role = Role::administrator; // everyone's when authentication is off
    std::string address = {};        // of the client, numeric; "" for a provider's own call
    std::size_t operationBytes = 0;  // of memory, for the operation; an open enumeration keeps it
};

// The receiver of an operation's results.
//
// One function for each kind of result object. Results are taken one at a time and in order, as
// they come into being, so that an answer of any length can be encoded and sent without being held
// in memory. They end when Dispatcher::dispatch returns; an error is the exception that it
// throws, and then results taken before it count only if they have already been sent.
//
// Which kinds an operation gives is stated at each function. A kind that a receiver does not expect
// is a mistake of the server: std::logic_error.
//
// Objects are passed as the provider delivered them. The receiver of a wire answer applies the
// property list and takes away qualifiers and class origins that were not asked for; a receiver for
// a provider's own call takes objects unchanged.
//
// A sink serves one operation and is called by one thread at a time.
class ResultSink {
public:
    virtual ~ResultSink() = default;

    // Replaces the operation's property list for the results that follow; called before the first
    // of them. EnumerateInstances without DeepInheritance and property list shows the properties of
    // the requested class alone.
    virtual void limitProperties(const Pegasus::CIMPropertyList&) {}

    // Class origins are wanted in the results that follow, though the operation does not say so:
    // what is pulled was asked for when it was opened.
    virtual void includeClassOrigin() {}

    // GetInstance: exactly one.
    virtual void instance(const Pegasus::CIMInstance&) { unexpected("instance"); }

    // EnumerateInstances.
    virtual void namedInstance(const Pegasus::CIMInstance&) { unexpected("namedInstance"); }

    // EnumerateInstanceNames; CreateInstance: exactly one.
    virtual void instanceName(const Pegasus::CIMObjectPath&) { unexpected("instanceName"); }

    // Associators, References: instances or, for a class's associations, classes. Host and
    // namespace of the path are set.
    virtual void objectWithPath(const Pegasus::CIMObject&) { unexpected("objectWithPath"); }

    // AssociatorNames, ReferenceNames: with host and namespace. A class where the operation was of
    // a class, else an instance.
    virtual void objectPath(const Pegasus::CIMObjectPath&) { unexpected("objectPath"); }

    // Opened and pulled enumerations: with host and namespace.
    virtual void instanceWithPath(const Pegasus::CIMObjectPath&, const Pegasus::CIMInstance&) {
        unexpected("instanceWithPath");
    }
    virtual void instancePath(const Pegasus::CIMObjectPath&) { unexpected("instancePath"); }

    // InvokeMethod: at most one, at any time; GetProperty: exactly one.
    virtual void returnValue(const Pegasus::CIMValue&) { unexpected("returnValue"); }

    // InvokeMethod; opened and pulled enumerations: their state.
    virtual void outParameter(const Pegasus::CIMParamValue&) { unexpected("outParameter"); }

    // GetClass: exactly one; EnumerateClasses. Already reduced to what was asked for.
    virtual void classDeclaration(const Pegasus::CIMClass&) { unexpected("classDeclaration"); }

    // EnumerateClassNames.
    virtual void className(const Pegasus::CIMName&) { unexpected("className"); }

    // GetQualifier: exactly one; EnumerateQualifiers.
    virtual void qualifier(const QualifierDeclaration&) { unexpected("qualifier"); }

private:
    [[noreturn]] static void unexpected(const char* kind) {
        throw std::logic_error(std::string("result of an unexpected kind: ") + kind);
    }
};

class Dispatcher {
public:
    virtual ~Dispatcher() = default;

    // Carries out one operation and hands its results to `sink` before it returns.
    //
    // Throws CIMException with the code and the bare text of the error, without the name of the
    // code before it; any exception that a provider threw arrives as such a one. What `sink` throws
    // ends the operation and is passed on unchanged.
    //
    // Threads: called by any number of threads at once, and again by a thread that is inside it
    // (a provider that calls back).
    virtual void dispatch(const Operation& operation, const RequestContext& context,
                          ResultSink& sink) = 0;
};

} // namespace smisd
