#pragma once

#include <initializer_list>
#include <string>
#include <typeinfo>
#include <utility>

#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Handlers.h"
#include "tests/support/Log.h"
#include "tests/support/ScriptedEngine.h"
#include "tests/support/Text.h"
#include "tests/support/TraceCapture.h"

namespace scripted {

// An initialized provider before an engine without objects, and an empty log.
template<class Provider>
class ProviderTest : public testing::Test {
protected:
    ProviderTest() {
        resetEngine();
        Pegasus::CIMOMHandle handle;
        provider.initialize(handle);
        clearLog();
    }

    // Every record that the provider was handed must have been deleted, and before the next.
    ~ProviderTest() override {
        EXPECT_EQ(recordsHandedOut(), 0);
        EXPECT_LE(mostRecordsHandedOut(), 1);
    }

    TraceCapture capture;
    Provider provider;
    Pegasus::OperationContext context;
};

// The message of the exception that a call throws: exactly of this class.
template<class Expected, class Call>
std::string thrownBy(Call call) {
    try {
        call();
    } catch (const Pegasus::Exception& exception) {
        const std::string message = text(exception.getMessage());
        return typeid(exception) == typeid(Expected) ? message : "another exception: " + message;
    }
    return "no exception";
}

// The path of a request: "//host/root/snia:Class", and keys of type string.
inline Pegasus::CIMObjectPath
requestPath(const Pegasus::CIMName& className,
            std::initializer_list<std::pair<const char*, std::string>> keys = {}) {
    Pegasus::Array<Pegasus::CIMKeyBinding> bindings;
    for (const auto& [name, value] : keys) {
        bindings.append(Pegasus::CIMKeyBinding(name, Pegasus::String(value.c_str()),
                                               Pegasus::CIMKeyBinding::STRING));
    }
    return Pegasus::CIMObjectPath("client.example.com", Pegasus::CIMNamespaceName("root/snia"),
                                  className, bindings);
}

// The path that the module gives an engine object: //array1.example.com/root/snia:Class.key="...".
inline std::string objectText(const std::string& className, const std::string& key,
                              Pegasus::Uint32 id) {
    return "//array1.example.com/root/snia:" + className + "." + key + "=\"" + keyText(id) + "\"";
}

} // namespace scripted
