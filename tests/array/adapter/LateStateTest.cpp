// A state directory that appears after the start.

#include <cstdlib>

#include <gtest/gtest.h>

#include "array/Array.h"
#include "engine/DRAVEngine.h"
#include "engine/OperationScope.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "tests/array/ArrayFixture.h"
#include "tests/support/Client.h"
#include "tests/support/Handlers.h"
#include "tests/support/TraceCapture.h"

namespace Pegasus {
namespace {

std::string nameOf(const CIMInstance& service) {
    String name;
    service.getProperty(service.findProperty("SystemName")).getValue().get(name);
    EXPECT_EQ(name, service.getPath().getHost());
    return scripted::text(name);
}

// A state directory that this process's engine looks for and that isn't there yet.
class LateStateTest : public testing::Test {
protected:
    void SetUp() override {
        if (std::getenv("DRAV_STATE_DIR")) {
            GTEST_SKIP() << "another test of this process has opened the array";
        }
        static const array::TemporaryDirectory parent;
        directory = parent.path() / "state";
        setenv("DRAV_STATE_DIR", directory.c_str(), 1);
        CIMOMHandle handle;
        provider.initialize(handle);
    }

    void createState() {
        array::Array::openOrCreate(directory)->change([](array::Change& change) {
            change.setNames({"late", "late"});
        });
    }

    // The name that a service has, which makes no call of the engine.
    std::string served() {
        provider.getInstance(context, scripted::classPath("CIM_Any"), false, false,
                             scripted::ALL_PROPERTIES, handler);
        return nameOf(handler.delivered.back());
    }

    array::fs::path directory;
    ControllerConfigurationServiceProvider provider;
    const OperationContext context;
    scripted::InstanceHandler handler;
};

TEST_F(LateStateTest, TheServicesHaveTheArraysNamesAsSoonAsThereIsOne) {
    EXPECT_EQ(served(), "localhost");
    createState();
    EXPECT_EQ(served(), "late");
}

TEST_F(LateStateTest, AnOperationThatReadANameBeforeKeepsToIt) {
    {
        const OperationScope operation;
        EXPECT_EQ(served(), "localhost");
        createState();
        EXPECT_EQ(served(), "localhost");
        DRAVEngine::_getInstance()->enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
        EXPECT_EQ(served(), "localhost");
    }
    EXPECT_EQ(served(), "late");
}

} // namespace
} // namespace Pegasus
