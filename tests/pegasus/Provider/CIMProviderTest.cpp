// A provider of every kind, as a module would write it, called with handlers of a test.

#include <memory>
#include <string>
#include <vector>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

namespace {

class Provider : public CIMInstanceProvider,
                 public CIMMethodProvider,
                 public CIMAssociationProvider {
public:
    void initialize(CIMOMHandle& cimom) override { _cimom = cimom; }
    void terminate() override { terminated = true; }

    void getInstance(const OperationContext&, const CIMObjectPath& instanceReference, const Boolean,
                     const Boolean, const CIMPropertyList&,
                     InstanceResponseHandler& handler) override {
        handler.processing();
        CIMInstance instance(instanceReference.getClassName());
        instance.setPath(instanceReference);
        handler.deliver(instance);
        handler.complete();
    }
    void enumerateInstances(const OperationContext&, const CIMObjectPath& classReference,
                            const Boolean, const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override {
        handler.processing();
        handler.deliver(Array<CIMInstance>(2, CIMInstance(classReference.getClassName())));
        handler.complete();
    }
    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath& classReference,
                                ObjectPathResponseHandler& handler) override {
        handler.processing();
        handler.deliver(classReference);
        handler.deliver(Array<CIMObjectPath>(2, classReference));
        handler.complete();
    }
    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler& handler) override {
        handler.processing();
        handler.complete();
    }
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {
        throw CIMNotSupportedException("Provider::createInstance");
    }
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {
        throw CIMNotSupportedException("Provider::deleteInstance");
    }
    void invokeMethod(const OperationContext&, const CIMObjectPath&, const CIMName& methodName,
                      const Array<CIMParamValue>& inParameters,
                      MethodResultResponseHandler& handler) override {
        handler.processing();
        handler.deliverParamValue(CIMParamValue("name", CIMValue(methodName.getString())));
        handler.deliverParamValue(inParameters);
        handler.deliver(CIMValue(Uint32(0)));
        handler.complete();
    }
    void associators(const OperationContext&, const CIMObjectPath& objectName, const CIMName&,
                     const CIMName&, const String&, const String&, const Boolean, const Boolean,
                     const CIMPropertyList&, ObjectResponseHandler& handler) override {
        handler.processing();
        CIMInstance instance(objectName.getClassName());
        handler.deliver(instance); // converts to CIMObject
        handler.complete();
    }
    void associatorNames(const OperationContext&, const CIMObjectPath&, const CIMName&,
                         const CIMName&, const String&, const String&,
                         ObjectPathResponseHandler&) override {}
    void references(const OperationContext&, const CIMObjectPath&, const CIMName&, const String&,
                    const Boolean, const Boolean, const CIMPropertyList&,
                    ObjectResponseHandler&) override {}
    void referenceNames(const OperationContext&, const CIMObjectPath&, const CIMName&,
                        const String&, ObjectPathResponseHandler&) override {}

    bool terminated = false;

private:
    CIMOMHandle _cimom;
};

// Records what a provider calls.
class Recorder : virtual public ResponseHandler {
public:
    void processing() override { calls.push_back("processing"); }
    void complete() override { calls.push_back("complete"); }

    std::vector<std::string> calls;

protected:
    void record(const String& text) { calls.push_back(utf8(text)); }
    template<class T>
    void each(const Array<T>& array) {
        for (Uint32 i = 0; i < array.size(); ++i) {
            one(array[i]);
        }
    }
    void one(const CIMObjectPath& x) { record(x.toString()); }
    void one(const CIMObject& x) { record(x.getPath().toString()); }
    void one(const CIMParamValue& x) {
        record(x.getParameterName() + "=" + x.getValue().toString());
    }
};

class Instances : public InstanceResponseHandler, public Recorder {
public:
    void deliver(const CIMInstance& x) override { one(x); }
    void deliver(const Array<CIMInstance>& x) override {
        for (Uint32 i = 0; i < x.size(); ++i) {
            one(x[i]);
        }
    }
};

class Paths : public ObjectPathResponseHandler, public Recorder {
public:
    void deliver(const CIMObjectPath& x) override { one(x); }
    void deliver(const Array<CIMObjectPath>& x) override { each(x); }
};

class Results : public MethodResultResponseHandler, public Recorder {
public:
    void deliverParamValue(const CIMParamValue& x) override { one(x); }
    void deliverParamValue(const Array<CIMParamValue>& x) override { each(x); }
    void deliver(const CIMValue& x) override { record(x.toString()); }
};

class Objects : public ObjectResponseHandler, public Recorder {
public:
    void deliver(const CIMObject& x) override { one(x); }
    void deliver(const Array<CIMObject>& x) override { each(x); }
};

using Calls = std::vector<std::string>;

class CIMProviderTest : public testing::Test {
protected:
    CIMProviderTest() : _owner(new Provider), _provider(_owner.get()) {}

    // As a server does: from the base to the interface that it needs.
    template<class Interface>
    Interface& as() {
        auto* interface = dynamic_cast<Interface*>(_provider);
        EXPECT_NE(interface, nullptr);
        return *interface;
    }

    const OperationContext _context;

private:
    std::unique_ptr<Provider> _owner;
    CIMProvider* _provider;
};

} // namespace

TEST_F(CIMProviderTest, GetInstanceDeliversThroughItsHandler) {
    Instances handler;
    as<CIMInstanceProvider>().getInstance(_context, CIMObjectPath("root:C.k=1"), false, false,
                                          CIMPropertyList(), handler);
    EXPECT_EQ(handler.calls, (Calls{"processing", "root:C.k=1", "complete"}));
}

TEST_F(CIMProviderTest, EnumerateInstancesDeliversAnArray) {
    Instances handler;
    as<CIMInstanceProvider>().enumerateInstances(_context, CIMObjectPath("C"), false, false,
                                                 CIMPropertyList(), handler);
    EXPECT_EQ(handler.calls, (Calls{"processing", "C", "C", "complete"}));
}

TEST_F(CIMProviderTest, EnumerateInstanceNamesDeliversPaths) {
    Paths handler;
    as<CIMInstanceProvider>().enumerateInstanceNames(_context, CIMObjectPath("C"), handler);
    EXPECT_EQ(handler.calls, (Calls{"processing", "C", "C", "C", "complete"}));
}

TEST_F(CIMProviderTest, ModifyInstanceHasAPlainHandler) {
    Recorder handler;
    as<CIMInstanceProvider>().modifyInstance(
        _context, CIMObjectPath("C"), CIMInstance(CIMName("C")), true, CIMPropertyList(), handler);
    EXPECT_EQ(handler.calls, (Calls{"processing", "complete"}));
}

TEST_F(CIMProviderTest, ARefusalIsThrown) {
    Paths handler;
    EXPECT_EQ(messageOf<CIMNotSupportedException>([&] {
                  as<CIMInstanceProvider>().createInstance(_context, CIMObjectPath("C"),
                                                           CIMInstance(CIMName("C")), handler);
              }),
              "Provider::createInstance");
}

TEST_F(CIMProviderTest, InvokeMethodDeliversArgumentsAndTheReturnValue) {
    Results handler;
    Array<CIMParamValue> in;
    in.append(CIMParamValue("x", CIMValue(Uint8(7))));
    as<CIMMethodProvider>().invokeMethod(_context, CIMObjectPath("C.k=1"), CIMName("Do"), in,
                                         handler);
    EXPECT_EQ(handler.calls, (Calls{"processing", "name=Do", "x=7", "0", "complete"}));
}

TEST_F(CIMProviderTest, AssociatorsDeliverAnInstanceAsAnObject) {
    Objects handler;
    as<CIMAssociationProvider>().associators(_context, CIMObjectPath("C.k=1"), CIMName(), CIMName(),
                                             "", "", false, false, CIMPropertyList(), handler);
    EXPECT_EQ(handler.calls, (Calls{"processing", "C", "complete"}));
}

TEST_F(CIMProviderTest, IsOneObjectBehindAllItsInterfaces) {
    EXPECT_EQ(static_cast<CIMProvider*>(&as<CIMInstanceProvider>()),
              static_cast<CIMProvider*>(&as<CIMAssociationProvider>()));
    EXPECT_EQ(static_cast<CIMProvider*>(&as<CIMMethodProvider>()), &as<CIMProvider>());
}
