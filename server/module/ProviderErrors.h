// What leaves a provider as an exception, as the error that a client sees.
#pragma once

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

namespace smisd {

// Inside a catch block: the exception in flight, as OpenPegasus reports it. A CIMException keeps
// code and text; another Exception or std::exception becomes CIM_ERR_FAILED with its text; anything
// else CIM_ERR_FAILED "Unknown error.".
Pegasus::CIMException currentProviderError();

// Runs a provider's operation, which delivers to the handler, and throws what leaves it as a
// CIMException. One with code CIM_ERR_SUCCESS ends the operation without a result or an error. What
// the receiver of the results threw is passed on as it is.
template<class Handler, class Call>
void callProvider(const Handler& handler, Call call) {
    try {
        call();
    } catch (...) {
        handler.passOn();
        const Pegasus::CIMException error = currentProviderError();
        if (error.getCode() != Pegasus::CIM_ERR_SUCCESS)
            throw error;
        return;
    }
    handler.passOn();
}

} // namespace smisd
