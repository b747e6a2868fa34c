// A handle whose calls go to a server, which here is a table of what was asked.

#include <memory>

#include <Pegasus/Provider/CIMOMHandle.h>
#include <Pegasus/Provider/ProviderException.h>
#include <gtest/gtest.h>

#include "pegasus/host/CimomBackend.h"
#include "tests/pegasus/Text.h"

using namespace Pegasus;

namespace {

const CIMNamespaceName space("root/x");

class Backend : public CimomBackend {
public:
    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                            const CIMObjectPath& instanceName, bool localOnly,
                            bool includeQualifiers, bool includeClassOrigin,
                            const CIMPropertyList& propertyList) override {
        asked = utf8(IdentityContainer(context.get(IdentityContainer::NAME)).getUserName()) + " " +
                utf8(nameSpace.getString()) + " " + utf8(instanceName.toString()) +
                (localOnly ? " local" : "") + (includeQualifiers ? " qualifiers" : "") +
                (includeClassOrigin ? " origin" : "") + (propertyList.isNull() ? " all" : "");
        return CIMInstance(instanceName.getClassName());
    }
    CIMValue invokeMethod(const OperationContext&, const CIMNamespaceName&, const CIMObjectPath&,
                          const CIMName&, const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters) override {
        outParameters = inParameters;
        return CIMValue(Uint32(inParameters.size()));
    }
    void deleteInstance(const OperationContext&, const CIMNamespaceName&,
                        const CIMObjectPath&) override {
        throw CIMObjectNotFoundException("no such instance");
    }
    void disallowProviderUnload() override { ++held; }
    void allowProviderUnload() override { --held; }

    std::string asked;
    int held = 0;
};

OperationContext contextOf(const char* user) {
    OperationContext context;
    context.insert(IdentityContainer(user));
    return context;
}

} // namespace

TEST(CIMOMHandle, PassesCallsWithAllArgumentsToTheServer) {
    const auto backend = std::make_shared<Backend>();
    CIMOMHandle handle = makeCimomHandle(backend);
    const CIMInstance instance = handle.getInstance(
        contextOf("someone"), space, CIMObjectPath("C.k=1"), true, false, true, CIMPropertyList());
    EXPECT_EQ(backend->asked, "someone root/x C.k=1 local origin all");
    EXPECT_EQ(instance.getClassName().getString(), "C");
}

TEST(CIMOMHandle, GivesOutParametersAndTheReturnValueBack) {
    CIMOMHandle handle = makeCimomHandle(std::make_shared<Backend>());
    Array<CIMParamValue> in(1, CIMParamValue("p", CIMValue(Uint8(1)))), out;
    EXPECT_EQ(
        handle.invokeMethod(OperationContext(), space, CIMObjectPath("C"), CIMName("M"), in, out),
        CIMValue(Uint32(1)));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].getParameterName(), "p");
}

TEST(CIMOMHandle, PassesErrorsOn) {
    CIMOMHandle handle = makeCimomHandle(std::make_shared<Backend>());
    EXPECT_EQ(messageOf<CIMObjectNotFoundException>([&] {
                  handle.deleteInstance(OperationContext(), space, CIMObjectPath("C.k=1"));
              }),
              "no such instance");
}

TEST(CIMOMHandle, CopiesAreTheSameHandleAndKeepTheServerAlive) {
    auto backend = std::make_shared<Backend>();
    CIMOMHandle copy;
    {
        const CIMOMHandle handle = makeCimomHandle(backend);
        copy = handle;
    }
    const std::weak_ptr<Backend> watch = backend;
    backend.reset();
    ASSERT_FALSE(watch.expired());
    CIMOMHandle other(copy);
    other.disallowProviderUnload();
    EXPECT_EQ(watch.lock()->held, 1);
    copy.allowProviderUnload();
    EXPECT_EQ(watch.lock()->held, 0);
}

TEST(CIMOMHandle, WithoutAServerCallsFailAndSayWhy) {
    CIMOMHandle handle;
    try {
        handle.enumerateInstanceNames(OperationContext(), space, CIMName("C"));
        FAIL() << "nothing was thrown";
    } catch (const CIMException& e) {
        EXPECT_EQ(e.getCode(), CIM_ERR_FAILED);
        EXPECT_NE(utf8(e.getMessage()).find("no server"), std::string::npos);
    }
    EXPECT_NO_THROW(handle.disallowProviderUnload());
    EXPECT_NO_THROW(handle.allowProviderUnload());
}

// Each call that a server does not serve is refused by its name.
TEST(CIMOMHandle, WhatAServerDoesNotServeIsRefusedByName) {
    CIMOMHandle h = makeCimomHandle(std::make_shared<CimomBackend>());
    const OperationContext context;
    const CIMName name("C");
    const CIMObjectPath path("C.k=1");
    const CIMPropertyList all;
    const CIMInstance instance(name);
    const CIMClass cimClass(name);
    Array<CIMParamValue> params;
    const auto refused = [](auto call) { return messageOf<CIMNotSupportedException>(call); };
    EXPECT_EQ(refused([&] { h.getClass(context, space, name, true, true, true, all); }),
              "CIMOMHandle::getClass");
    EXPECT_EQ(refused([&] { h.enumerateClasses(context, space, name, true, true, true, true); }),
              "CIMOMHandle::enumerateClasses");
    EXPECT_EQ(refused([&] { h.enumerateClassNames(context, space, name, true); }),
              "CIMOMHandle::enumerateClassNames");
    EXPECT_EQ(refused([&] { h.createClass(context, space, cimClass); }),
              "CIMOMHandle::createClass");
    EXPECT_EQ(refused([&] { h.modifyClass(context, space, cimClass); }),
              "CIMOMHandle::modifyClass");
    EXPECT_EQ(refused([&] { h.deleteClass(context, space, name); }), "CIMOMHandle::deleteClass");
    EXPECT_EQ(refused([&] { h.getInstance(context, space, path, true, true, true, all); }),
              "CIMOMHandle::getInstance");
    EXPECT_EQ(
        refused([&] { h.enumerateInstances(context, space, name, true, true, true, true, all); }),
        "CIMOMHandle::enumerateInstances");
    EXPECT_EQ(refused([&] { h.enumerateInstanceNames(context, space, name); }),
              "CIMOMHandle::enumerateInstanceNames");
    EXPECT_EQ(refused([&] { h.createInstance(context, space, instance); }),
              "CIMOMHandle::createInstance");
    EXPECT_EQ(refused([&] { h.modifyInstance(context, space, instance, true, all); }),
              "CIMOMHandle::modifyInstance");
    EXPECT_EQ(refused([&] { h.deleteInstance(context, space, path); }),
              "CIMOMHandle::deleteInstance");
    EXPECT_EQ(refused([&] { h.execQuery(context, space, "WQL", "q"); }), "CIMOMHandle::execQuery");
    EXPECT_EQ(
        refused([&] { h.associators(context, space, path, name, name, "", "", true, true, all); }),
        "CIMOMHandle::associators");
    EXPECT_EQ(refused([&] { h.associatorNames(context, space, path, name, name, "", ""); }),
              "CIMOMHandle::associatorNames");
    EXPECT_EQ(refused([&] { h.references(context, space, path, name, "", true, true, all); }),
              "CIMOMHandle::references");
    EXPECT_EQ(refused([&] { h.referenceNames(context, space, path, name, ""); }),
              "CIMOMHandle::referenceNames");
    EXPECT_EQ(refused([&] { h.getProperty(context, space, path, name); }),
              "CIMOMHandle::getProperty");
    EXPECT_EQ(refused([&] { h.setProperty(context, space, path, name, CIMValue()); }),
              "CIMOMHandle::setProperty");
    EXPECT_EQ(refused([&] { h.invokeMethod(context, space, path, name, params, params); }),
              "CIMOMHandle::invokeMethod");
}
