// What one operation of a provider reads is of one snapshot of the array, whatever others change
// meanwhile.

#include <atomic>
#include <functional>
#include <map>
#include <stop_token>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "array/adapter/ThisArray.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVInitiator.h"
#include "engine/OperationScope.h"
#include "engine/builders/iSCSINode.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Services.h"
#include "providers/identity/AuthorizedAccessProvider.h"
#include "providers/identity/StorageHardwareIDProvider.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"
#include "tests/support/Client.h"
#include "tests/support/Handlers.h"
#include "tests/support/ScriptedCIMOM.h"
#include "tests/support/ServedArray.h"
#include "tests/support/TraceCapture.h"

namespace Pegasus {
namespace {

using array::Change;
using array::Id;
using scripted::ALL_PROPERTIES;
using scripted::classPath;
using scripted::text;
using testing::ElementsAre;

std::string iSCSIName(const std::string& rest) {
    return "iqn.2026-01.com.example:" + rest;
}

template<class Provider>
struct Ready {
    Ready() {
        CIMOMHandle handle;
        provider.initialize(handle);
    }
    Provider provider;
    OperationContext context;
};

// Does something each time when an object is delivered, and keeps the objects.
template<class Interface, class Object>
class Interrupting : public Interface {
public:
    explicit Interrupting(std::function<void()> interruption = [] {})
        : _interruption(std::move(interruption)) {}

    void processing() override {}
    void complete() override {}
    void deliver(const Object& object) override {
        delivered.push_back(object);
        _interruption();
    }
    void deliver(const Array<Object>&) override { ADD_FAILURE() << "one by one"; }

    std::vector<Object> delivered;

private:
    const std::function<void()> _interruption;
};

using Instances = Interrupting<InstanceResponseHandler, CIMInstance>;
using ObjectPaths = Interrupting<ObjectPathResponseHandler, CIMObjectPath>;
using Objects = Interrupting<ObjectResponseHandler, CIMObject>;

class OperationTest : public testing::Test {
protected:
    Id addHost(const std::string& name) {
        Id id = 0;
        served.change([&](Change& change) {
            id = change.create(array::Initiator{iSCSIName(name), ""});
        });
        return id;
    }

    Id addTarget(const std::string& name) {
        Id id = 0;
        served.change([&](Change& change) {
            id = change.create(array::Target{iSCSIName(name), ""});
        });
        return id;
    }

    // As another client of the array does.
    void remove(Id id) {
        served.change([&](Change& change) { change.remove(id); });
    }

    void rename(const std::string& host, const std::string& system) {
        served.change([&](Change& change) { change.setNames({host, system}); });
    }

    std::vector<Id> hosts() {
        const Array<Uint32> ids =
            engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR);
        return std::vector<Id>(ids.getData(), ids.getData() + ids.size());
    }

    std::string nameOf(Id host) {
        const std::unique_ptr<ManagedObject> record(engine.getObject(CLASSID_INITIATOR, host));
        return text(dynamic_cast<DRAVInitiator&>(*record).name);
    }

    scripted::TraceCapture capture;
    array::Array& served = scripted::emptyServedArray();
    DRAVEngine& engine = *DRAVEngine::_getInstance();
};

TEST_F(OperationTest, ReadsTheArrayAsItWasAtItsFirstRead) {
    const Id host = addHost("h1");
    const Id target = addTarget("t1");
    {
        const OperationScope operation;
        EXPECT_THAT(hosts(), ElementsAre(host));
        remove(host);
        remove(target);
        addHost("h2");

        EXPECT_THAT(hosts(), ElementsAre(host));
        EXPECT_EQ(nameOf(host), iSCSIName("h1"));
        EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, iSCSIName("h1").c_str()), host);
        EXPECT_EQ(engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, iSCSIName("h2").c_str()), 0u);
        EXPECT_EQ(CIMInstance(iSCSINodeInstance(false, ALL_PROPERTIES, target)).getPath(),
                  iSCSINodePath(target));
    }
    EXPECT_THAT(hosts(), testing::Not(testing::Contains(host)));
    EXPECT_THROW(iSCSINodePath{target}, CIMObjectNotFoundException);
}

TEST_F(OperationTest, SeesWhatItChangedItself) {
    const Id host = addHost("h1");
    const OperationScope operation;
    EXPECT_THAT(hosts(), ElementsAre(host));
    const Id others = addHost("h2");
    EXPECT_THAT(hosts(), ElementsAre(host));

    const Id own =
        engine.createObject(CLASSID_INITIATOR, DRAVInitiator(String(iSCSIName("h3").c_str())));
    EXPECT_EQ(nameOf(own), iSCSIName("h3"));
    EXPECT_THAT(hosts(), ElementsAre(host, others, own));
    engine.deleteObject(CLASSID_INITIATOR, own);
    EXPECT_THAT(hosts(), ElementsAre(host, others));
}

TEST_F(OperationTest, OneThatItCallsReadsTheSame) {
    const Id host = addHost("h1");
    {
        const OperationScope operation;
        hosts();
        remove(host);
        {
            const OperationScope called;
            EXPECT_THAT(hosts(), ElementsAre(host));
        }
        EXPECT_THAT(hosts(), ElementsAre(host));
    }
    EXPECT_THAT(hosts(), ElementsAre());
}

TEST_F(OperationTest, IsOfNoConcernToOtherThreads) {
    const Id host = addHost("h1");
    const OperationScope operation;
    hosts();
    remove(host);
    std::thread([&] { EXPECT_THAT(hosts(), ElementsAre()); }).join();
    EXPECT_THAT(hosts(), ElementsAre(host));
}

TEST_F(OperationTest, EndsWithAnException) {
    Ready<StorageHardwareIDProvider> hardwareIDs;
    const CIMObjectPath unknown =
        modulePath("CIM_StorageHardwareID", "InstanceID", addHost("h1") + 1);
    Instances handler;
    const auto get = [&] {
        hardwareIDs.provider.getInstance(hardwareIDs.context, unknown, false, false, ALL_PROPERTIES,
                                         handler);
    };
    EXPECT_THROW(get(), DRAVOperationFailedException);
    addHost("h2");
    get();
    EXPECT_EQ(handler.delivered.size(), 1u);
}

TEST_F(OperationTest, AnEnumerationIsOfWhatWasThereWhenItBegan) {
    const Id last = (addHost("h1"), addHost("h2"));
    Ready<StorageHardwareIDProvider> hardwareIDs;
    Instances handler([&] {
        if (served.snapshot()->exists(last)) {
            remove(last);
        }
    });
    hardwareIDs.provider.enumerateInstances(hardwareIDs.context, classPath("CIM_StorageHardwareID"),
                                            false, false, ALL_PROPERTIES, handler);
    EXPECT_EQ(handler.delivered.size(), 2u);
    EXPECT_THAT(hosts(), testing::SizeIs(1));
}

// The server runs what a provider calls back on the same thread.
TEST_F(OperationTest, ACallBackIsAnsweredAsItsCallerSeesTheArray) {
    const Id host = addHost("h1");
    const Id target = addTarget("t1");
    served.change([&](Change& change) { change.grant(target, host); });
    const CIMObjectPath controller = iSCSINodePath(target);
    Ready<AuthorizedAccessProvider> access;
    Ready<SCSIProtocolControllerProvider> controllers;
    scripted::answerGetInstance([&](const CIMObjectPath& path) {
        remove(target);
        Instances handler;
        controllers.provider.getInstance(controllers.context, path, false, false, ALL_PROPERTIES,
                                         handler);
        return handler.delivered.at(0);
    });
    Objects handler;
    access.provider.associators(access.context,
                                modulePath("CIM_AuthorizedPrivilege", "InstanceID", host),
                                "CIM_AuthorizedTarget", "CIM_SCSIProtocolController", "", "", false,
                                false, ALL_PROPERTIES, handler);
    scripted::answerGetInstance({});

    ASSERT_EQ(handler.delivered.size(), 1u);
    EXPECT_EQ(handler.delivered[0].getPath(), controller);
    EXPECT_FALSE(served.snapshot()->exists(target));
}

// The texts in which a name of the array stands: hosts of paths and values.
std::vector<std::string> namesIn(const CIMInstance& instance) {
    std::vector<std::string> names = {text(instance.getPath().getHost())};
    for (const char* name : {"SystemName", "Name"}) {
        String value;
        instance.getProperty(instance.findProperty(name)).getValue().get(value);
        names.push_back(text(value));
    }
    const Array<CIMKeyBinding> keys = instance.getPath().getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (keys[i].getName().equal("SystemName") || keys[i].getName().equal("Name")) {
            names.push_back(text(keys[i].getValue()));
        }
    }
    return names;
}

TEST_F(OperationTest, SeesTheNamesThatTheArrayHadAtItsFirstRead) {
    const Id target = addTarget("t1");
    rename("one", "one");
    {
        const OperationScope operation;
        const std::string node = text(iSCSINodePath(target));
        EXPECT_THAT(node, testing::StartsWith("//one/"));
        rename("two", "two");
        std::thread([&] { EXPECT_EQ(text(modulePath("CIM_Some", {}).getHost()), "two"); }).join();

        EXPECT_THAT(namesIn(serviceInstance("CIM_Service")), testing::Each("one"));
        EXPECT_EQ(text(iSCSINodePath(target)), node);
    }
    EXPECT_THAT(namesIn(serviceInstance("CIM_Service")), testing::Each("two"));
    EXPECT_THAT(text(iSCSINodePath(target)), testing::StartsWith("//two/"));
}

TEST_F(OperationTest, SeesTheNewestNamesOnceItHasChangedTheArray) {
    rename("one", "one");
    const OperationScope operation;
    hosts();
    rename("two", "two");
    EXPECT_THAT(namesIn(serviceInstance("CIM_Service")), testing::Each("one"));
    engine.createObject(CLASSID_INITIATOR, DRAVInitiator(String(iSCSIName("h1").c_str())));
    EXPECT_THAT(namesIn(serviceInstance("CIM_Service")), testing::Each("two"));
}

// They are kept as long as the process: an array that is renamed or loaded again and again must not
// fill it.
TEST_F(OperationTest, NamesThatTheArrayHasAgainAreKeptOnce) {
    rename("one", "one");
    const array::PathNames& one = array::currentNames();
    rename("two", "one");
    EXPECT_EQ(text(array::currentNames().host), "two");
    rename("one", "one");
    EXPECT_EQ(&array::currentNames(), &one);
    EXPECT_EQ(DRAVEngine::_OvrinHostNamePtr, &one.host);
    EXPECT_EQ(DRAVEngine::_OvrinSystemNamePtr, &one.system);
    rename("one", "three");
    EXPECT_EQ(text(array::currentNames().system), "three");
}

// Beside other threads. Each of these runs until the others have done enough as well.
constexpr int enough = 20;

TEST_F(OperationTest, EachEnumerationBesideChangesIsOfOneState) {
    served.change([](Change& change) {
        for (int i = 0; i < 1000; ++i) {
            change.create(array::Initiator{iSCSIName("host" + std::to_string(i)), ""});
        }
        change.create(array::Initiator{iSCSIName("left0"), ""});
        change.create(array::Initiator{iSCSIName("right0"), ""});
    });
    std::atomic<int> changes = 0;
    const std::jthread changing([&](const std::stop_token& stop) {
        for (int i = 1; !stop.stop_requested(); ++i) {
            served.change([&](Change& change) {
                for (const char* side : {"left", "right"}) {
                    change.remove(
                        change.snapshot().initiatorByName(iSCSIName(side + std::to_string(i - 1))));
                    change.create(array::Initiator{iSCSIName(side + std::to_string(i)), ""});
                }
            });
            ++changes;
        }
    });
    Ready<StorageHardwareIDProvider> hardwareIDs;
    int failures = 0;
    for (int i = 0; i < enough || changes < enough; ++i) {
        std::map<std::string, int> numbers; // how many hosts end so
        Instances handler;
        try {
            hardwareIDs.provider.enumerateInstances(hardwareIDs.context,
                                                    classPath("CIM_StorageHardwareID"), false,
                                                    false, ALL_PROPERTIES, handler);
        } catch (const CIMException&) {
            ++failures;
            continue;
        }
        EXPECT_EQ(handler.delivered.size(), 1002u);
        for (const CIMInstance& instance : handler.delivered) {
            String value;
            instance.getProperty(instance.findProperty("StorageID")).getValue().get(value);
            const std::string name = text(value);
            for (const std::string& side : {iSCSIName("left"), iSCSIName("right")}) {
                if (name.starts_with(side)) {
                    ++numbers[name.substr(side.size())];
                }
            }
        }
        EXPECT_THAT(numbers, ElementsAre(testing::Pair(testing::_, 2)));
    }
    EXPECT_EQ(failures, 0);
}

TEST_F(OperationTest, NoInstanceMixesNames) {
    rename("name0", "name0");
    std::atomic<int> changes = 0;
    const std::jthread renaming([&](const std::stop_token& stop) {
        for (int i = 1; !stop.stop_requested(); ++i) {
            const std::string name = "name" + std::to_string(i);
            rename(name, name);
            ++changes;
        }
    });
    Ready<ControllerConfigurationServiceProvider> service;
    for (int i = 0; i < enough || changes < enough; ++i) {
        Instances handler;
        service.provider.getInstance(service.context, classPath("CIM_Any"), false, false,
                                     ALL_PROPERTIES, handler);
        const std::vector<std::string> names = namesIn(handler.delivered.at(0));
        EXPECT_THAT(names, testing::Each(names.front()));
    }
}

} // namespace
} // namespace Pegasus
