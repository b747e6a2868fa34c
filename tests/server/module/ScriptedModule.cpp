// The entry point of the test module.
//
//   Scripted          a provider of every kind
//   InstanceOnly      a provider of instances alone; it counts its calls of each kind in a log
//   FailsOnce         its first initialize() throws
//   CallsItself       its initialize() asks the server for an instance of its own
//   ThrowsAtCreation  the entry point throws
//
// Any other name gives a null pointer.

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include <Pegasus/Common/Exception.h>

#include "tests/server/module/ScriptedProvider.h"

using namespace Pegasus;

namespace scripted {
namespace {

std::mutex logMutex;
std::string logText; // guarded by logMutex

void log(const std::string& line) {
    const std::lock_guard lock(logMutex);
    logText += line + "\n";
}

// Its initialize() takes its time, so that threads meet in it.
class InstanceOnlyProvider : public CIMInstanceProvider {
public:
    ~InstanceOnlyProvider() override { log("delete"); }
    void initialize(CIMOMHandle&) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        log("initialize");
    }
    void terminate() override { // ends as providers conventionally do
        log("terminate");
        delete this;
    }
    void getInstance(const OperationContext&, const CIMObjectPath&, const Boolean, const Boolean,
                     const CIMPropertyList&, InstanceResponseHandler&) override {}
    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler&) override {}
    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler&) override {}
    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {}
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {}
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {}
};

class FailsOnceProvider : public InstanceOnlyProvider {
public:
    void initialize(CIMOMHandle&) override {
        static std::atomic<int> calls = 0;
        if (calls++ == 0) {
            throw std::runtime_error("not now");
        }
        log("initialize");
    }
};

class StaysProvider : public InstanceOnlyProvider {
public:
    void terminate() override { log("terminate"); }
};

class CallsItselfProvider : public InstanceOnlyProvider {
public:
    void initialize(CIMOMHandle& cimom) override {
        const CIMName own("Test_CallsItself");
        cimom.getInstance(OperationContext(), CIMNamespaceName("root/test"),
                          CIMObjectPath(String(), CIMNamespaceName(), own), false, false, false,
                          CIMPropertyList());
    }
};

} // namespace
} // namespace scripted

extern "C" __attribute__((visibility("default"))) CIMProvider*
PegasusCreateProvider(const String& name) {
    using namespace scripted;
    if (name == "Scripted") {
        return static_cast<CIMInstanceProvider*>(new ScriptedProvider);
    }
    if (name == "InstanceOnly") {
        return new InstanceOnlyProvider;
    }
    if (name == "FailsOnce") {
        return new FailsOnceProvider;
    }
    if (name == "Stays") {
        return new StaysProvider;
    }
    if (name == "CallsItself") {
        return new CallsItselfProvider;
    }
    if (name == "ThrowsAtCreation") {
        throw Exception(String("no room"));
    }
    return nullptr;
}

// What the providers have logged since the last call.
extern "C" __attribute__((visibility("default"))) const char* takeScriptedLog() {
    static std::string taken;
    const std::lock_guard lock(scripted::logMutex);
    taken = std::exchange(scripted::logText, std::string());
    return taken.c_str();
}
