#pragma once

#include <cstdio>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <benchmark/benchmark.h>

#include "engine/DRAVEngine.h"

// Providers are measured over the array in DRAV_STATE_DIR, with handlers that count what they are
// given and drop it. Each benchmark reports "per_object": seconds per delivered object or visited
// unit, whichever its name says.

namespace bench {

template<class Interface, class Object>
class Dropping : public Interface {
public:
    void processing() override {}
    void complete() override {}
    void deliver(const Object& object) override {
        benchmark::DoNotOptimize(&object);
        ++delivered;
    }
    void deliver(const Pegasus::Array<Object>& objects) override { delivered += objects.size(); }

    std::size_t delivered = 0;
};

using Instances = Dropping<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using ObjectPaths = Dropping<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;
using Objects = Dropping<Pegasus::ObjectResponseHandler, Pegasus::CIMObject>;

class MethodResult : public Pegasus::MethodResultResponseHandler {
public:
    void processing() override {}
    void complete() override {}
    void deliverParamValue(const Pegasus::CIMParamValue&) override {}
    void deliverParamValue(const Pegasus::Array<Pegasus::CIMParamValue>&) override {}
    void deliver(const Pegasus::CIMValue& value) override { value.get(returned); }

    Pegasus::Uint32 returned = ~0U;
};

// A provider as a server has it.
template<class Provider>
struct Ready {
    Ready() {
        Pegasus::CIMOMHandle handle;
        provider.initialize(handle);
    }
    Provider provider;
    Pegasus::OperationContext context;
};

inline Pegasus::CIMObjectPath path(const char* className, const char* key = nullptr,
                                   const Pegasus::String& value = Pegasus::String()) {
    Pegasus::Array<Pegasus::CIMKeyBinding> keys;
    if (key) {
        keys.append(
            Pegasus::CIMKeyBinding(Pegasus::CIMName(key), value, Pegasus::CIMKeyBinding::STRING));
    }
    return Pegasus::CIMObjectPath("array1.example.com", Pegasus::CIMNamespaceName("root/snia"),
                                  Pegasus::CIMName(className), keys);
}

// Seconds per object over all iterations.
inline void report(benchmark::State& state, std::size_t objects) {
    state.counters["objects"] =
        static_cast<double>(objects) / static_cast<double>(state.iterations());
    state.counters["per_object"] = benchmark::Counter(
        static_cast<double>(objects), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

} // namespace bench
