#include "engine/SMIEventServices.h"

#include <cstdlib>
#include <vector>

#include "array/adapter/ThisArray.h"
#include "array/events/EventLog.h"
#include "tests/array/ArrayFixture.h"

namespace Pegasus {
namespace {

TEST(SMIEventServices, GivesTheEventToTheArraysLogWithAllItsArguments) {
    const array::TemporaryDirectory directory;
    if (!std::getenv("DRAV_STATE_DIR")) {
        setenv("DRAV_STATE_DIR", (directory.path() / "state").c_str(), 1);
    }
    // Without a state directory the event is dropped.
    SMIEventServices::publishKeyValueEvent(0, EMP_TYPE_UNIMPLEMENTED, "lost", "", 29, 1, "op", "f");

    array::Array::openOrCreate(array::stateDirectory());
    std::vector<array::Event> seen;
    array::theArray().events().observe([&](const array::Event& event) { seen.push_back(event); });
    SMIEventServices::publishKeyValueEvent(0, EMP_TYPE_METHOD_INVOKED, "invoked",
                                           "objectReference=x, methodName=y", 29, 42,
                                           "invokeMethod", "Service.cpp");
    SMIEventServices::publishKeyValueEvent(0, EMP_TYPE_UNIMPLEMENTED, "refused", "", 29, 7,
                                           "createInstance", "Service.cpp");
    array::theArray().events().observe({});
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].type, "method-invoked");
    EXPECT_EQ(seen[0].text, "invoked");
    EXPECT_EQ(seen[0].keyValues, "objectReference=x, methodName=y");
    EXPECT_EQ(seen[0].channel, 0);
    EXPECT_EQ(seen[0].severity, 29);
    EXPECT_EQ(seen[0].line, 42);
    EXPECT_EQ(seen[0].operation, "invokeMethod");
    EXPECT_EQ(seen[0].file, "Service.cpp");
    EXPECT_EQ(seen[1].type, "unimplemented");
}

} // namespace
} // namespace Pegasus
