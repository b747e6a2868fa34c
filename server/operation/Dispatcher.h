// Carries out operations.
#pragma once

#include "server/operation/Operation.h"
#include "server/operation/ResultSink.h"
#include "server/operation/Role.h"

#include <Pegasus/Common/String.h>

#include <string>

namespace smisd {

// What an operation needs to know of its request beside its parameters.
struct RequestContext {
    Pegasus::String userName;        // "" when authentication is off
    Pegasus::String acceptLanguage;  // text of the Accept-Language header, "" without one
    Pegasus::String contentLanguage; // text of the Content-Language header, "" without one
    Role role = Role::administrator; // everyone's when authentication is off
    std::string address = {};        // of the client, numeric; "" for a provider's own call
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
