// What the tests of the provider interface share.

#pragma once

#include <string>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

inline std::string utf8(const Pegasus::String& text) {
    return std::string(static_cast<const char*>(text.getCString()));
}

// The message of the exception that `action` throws.
template<class E = Pegasus::Exception, class F>
std::string messageOf(F action) {
    try {
        action();
    } catch (const E& e) {
        return utf8(e.getMessage());
    }
    return "(nothing was thrown)";
}
