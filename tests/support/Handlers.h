#pragma once

#include <string>
#include <utility>
#include <vector>

#include <Pegasus/Common/ResponseHandler.h>

#include "tests/support/Log.h"
#include "tests/support/Text.h"

namespace scripted {

// Response handlers that write what they are told into the log, "processing", "deliver <path>",
// "complete", and keep what was delivered.

template<class Interface>
class Handler : public Interface {
public:
    void processing() override { note(Entry::Response, "processing"); }
    void complete() override { note(Entry::Response, "complete"); }
};

template<class Interface, class Object>
class ObjectsHandler : public Handler<Interface> {
public:
    void deliver(const Object& object) override {
        note(Entry::Response, "deliver " + pathText(object));
        delivered.push_back(object);
    }

    void deliver(const Pegasus::Array<Object>& objects) override {
        note(Entry::Response, "deliver an array of " + std::to_string(objects.size()));
        for (Pegasus::Uint32 i = 0; i < objects.size(); ++i) {
            delivered.push_back(objects[i]);
        }
    }

    std::vector<Object> delivered;

private:
    static std::string pathText(const Pegasus::CIMObjectPath& path) { return text(path); }

    template<class Instance>
    static std::string pathText(const Instance& instance) {
        return text(instance.getPath());
    }
};

using PlainHandler = Handler<Pegasus::ResponseHandler>;
using InstanceHandler = ObjectsHandler<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using ObjectPathHandler =
    ObjectsHandler<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;
using ObjectHandler = ObjectsHandler<Pegasus::ObjectResponseHandler, Pegasus::CIMObject>;

// "deliverParamValue HardwareID: reference //host/..." and "deliver sint32 0".
class MethodResultHandler : public Handler<Pegasus::MethodResultResponseHandler> {
public:
    void deliverParamValue(const Pegasus::CIMParamValue& parameter) override {
        note(Entry::Response, "deliverParamValue " + text(parameter.getParameterName()) + ": " +
                                  text(parameter.getValue()));
        parameters.push_back(parameter);
    }

    void deliverParamValue(const Pegasus::Array<Pegasus::CIMParamValue>& values) override {
        note(Entry::Response, "deliverParamValue an array of " + std::to_string(values.size()));
        for (Pegasus::Uint32 i = 0; i < values.size(); ++i) {
            parameters.push_back(values[i]);
        }
    }

    void deliver(const Pegasus::CIMValue& value) override {
        note(Entry::Response, "deliver " + text(value));
        returnValues.push_back(value);
    }

    std::vector<Pegasus::CIMParamValue> parameters;
    std::vector<Pegasus::CIMValue> returnValues;
};

} // namespace scripted
