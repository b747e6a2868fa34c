// Everything at once: clients of the providers, changes through the engine, and changes that
// another process makes. Meant to be run under ThreadSanitizer too.

#include <memory>
#include <thread>
#include <vector>

#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <gtest/gtest.h>

#include "array/model/ErrorCode.h"
#include "array/model/Text.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVOperationFailedException.h"
#include "engine/DRAVTarget.h"
#include "engine/builders/iSCSINode.h"
#include "providers/identity/StorageHardwareIDProvider.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "tests/support/ServedArray.h"

namespace Pegasus {
namespace {

constexpr int rounds = 60;

template<class Interface, class Object>
class Collecting : public Interface {
public:
    void processing() override {}
    void complete() override {}
    void deliver(const Object& object) override { delivered.push_back(object); }
    void deliver(const Array<Object>& objects) override {
        for (Uint32 i = 0; i < objects.size(); ++i) {
            deliver(objects[i]);
        }
    }

    std::vector<Object> delivered;
};

template<class Provider>
struct Ready {
    Ready() {
        CIMOMHandle handle;
        provider.initialize(handle);
    }
    Provider provider;
    OperationContext context;
};

CIMObjectPath classPath(const char* className) {
    return CIMObjectPath("", CIMNamespaceName("root/snia"), CIMName(className));
}

bool isNameOf(const String& name, const std::string& prefix) {
    return array::toUtf8(name).starts_with(prefix);
}

void listHosts() {
    Ready<StorageHardwareIDProvider> ready;
    for (int i = 0; i < rounds; ++i) {
        Collecting<InstanceResponseHandler, CIMInstance> handler;
        ready.provider.enumerateInstances(ready.context, classPath("CIM_StorageHardwareID"), false,
                                          false, CIMPropertyList(), handler);
        for (const CIMInstance& instance : handler.delivered) {
            EXPECT_TRUE(isNameOf(instance.getPath().getHost(), "host"));
        }
    }
}

void listService() {
    Ready<ControllerConfigurationServiceProvider> ready;
    for (int i = 0; i < rounds; ++i) {
        Collecting<ObjectPathResponseHandler, CIMObjectPath> handler;
        ready.provider.enumerateInstanceNames(
            ready.context, classPath("CIM_ControllerConfigurationService"), handler);
        ASSERT_EQ(handler.delivered.size(), 1u);
        EXPECT_TRUE(isNameOf(handler.delivered[0].getKeyBindings()[1].getValue(), "system"));
    }
}

void readTargets(DRAVEngine& engine) {
    for (int i = 0; i < rounds; ++i) {
        const Array<Uint32> ids =
            engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
        for (Uint32 at = 0; at < ids.size(); ++at) {
            try {
                const std::unique_ptr<ManagedObject> record(
                    engine.getObject(CLASSID_TARGET, ids[at]));
                EXPECT_NE(dynamic_cast<DRAVTarget*>(record.get()), nullptr);
                const CIMObjectPath path = iSCSINodePath(ids[at]);
                EXPECT_TRUE(isNameOf(path.getHost(), "host"));
            } catch (const CIMException&) {
                // It is gone by now.
            }
        }
    }
}

String nameOf(const char* prefix, int thread, int i) {
    return array::fromUtf8("iqn.2026-01.com.example:" + std::string(prefix) +
                           std::to_string(thread) + "-" + std::to_string(i));
}

// Leaves one initiator, granted to one target, behind.
void change(DRAVEngine& engine, int thread) {
    for (int i = 0; i < rounds; ++i) {
        const Uint32 target =
            engine.createObject(CLASSID_TARGET, DRAVTarget(nameOf("t", thread, i)));
        const Uint32 initiator =
            engine.createObject(CLASSID_INITIATOR, DRAVInitiator(nameOf("i", thread, i)));
        engine.createAssociation(target, initiator);
        EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_TARGET, nameOf("t", thread, i)), target);
        EXPECT_EQ(engine.enumerateAssociatedObjects(initiator, CLASSID_TARGET).size(), 1u);
        if (i + 1 == rounds) {
            return;
        }
        engine.deleteObject(CLASSID_TARGET, target);
        engine.deleteObject(CLASSID_INITIATOR, initiator);
    }
}

// As another process would.
void rename(array::Array& other) {
    for (int i = 0; i < rounds; ++i) {
        const std::string number = std::to_string(i);
        other.change([&](array::Change& next) { next.setNames({"host" + number, "system"}); });
        EXPECT_EQ(other.snapshot()->names().host, "host" + number);
    }
}

TEST(MixedLoad, EverybodyGetsWhatIsTrue) {
    array::Array& served = scripted::emptyServedArray();
    served.change([](array::Change& next) { next.setNames({"host", "system"}); });
    DRAVEngine& engine = *DRAVEngine::_getInstance();
    const auto other = array::Array::open(served.directory());
    {
        std::vector<std::jthread> threads;
        threads.emplace_back(listHosts);
        threads.emplace_back(listHosts);
        threads.emplace_back(listService);
        threads.emplace_back([&] { readTargets(engine); });
        threads.emplace_back([&] { change(engine, 1); });
        threads.emplace_back([&] { change(engine, 2); });
        threads.emplace_back([&] { rename(*other); });
    }
    EXPECT_EQ(engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET).size(), 2u);
    EXPECT_EQ(engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR).size(),
              2u);
    EXPECT_EQ(array::toUtf8(*DRAVEngine::_OvrinHostNamePtr), "host" + std::to_string(rounds - 1));
    EXPECT_TRUE(other->check().empty());
}

} // namespace
} // namespace Pegasus
