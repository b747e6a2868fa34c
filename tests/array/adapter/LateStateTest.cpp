// A state directory that appears after the start.

#include <cstdlib>

#include <gtest/gtest.h>

#include "array/Array.h"
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

// The service makes no call of the engine.
TEST(LateStateTest, TheServicesHaveTheArraysNamesAsSoonAsThereIsOne) {
    if (std::getenv("DRAV_STATE_DIR")) {
        GTEST_SKIP() << "another test of this process has opened the array";
    }
    static const array::TemporaryDirectory parent;
    const array::fs::path directory = parent.path() / "state";
    setenv("DRAV_STATE_DIR", directory.c_str(), 1);

    ControllerConfigurationServiceProvider provider;
    CIMOMHandle handle;
    provider.initialize(handle);
    const OperationContext context;
    scripted::InstanceHandler handler;
    const auto serve = [&] {
        provider.getInstance(context, scripted::classPath("CIM_Any"), false, false,
                             scripted::ALL_PROPERTIES, handler);
        return nameOf(handler.delivered.back());
    };
    EXPECT_EQ(serve(), "localhost");
    array::Array::openOrCreate(directory)->change([](array::Change& change) {
        change.setNames({"late", "late"});
    });
    EXPECT_EQ(serve(), "late");
}

} // namespace
} // namespace Pegasus
