// An array whose state directory is not good at the start of the server.
#include "tests/wire/support/Array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Client.h"
#include "tests/wire/support/Smisd.h"

using testing::ElementsAre;

namespace wire {
namespace {

// The service is made without a call of the array's engine.
TEST(Array, ThatAppearsAfterTheStartNamesItsServicesAtOnce) {
    const Array array{Array::Empty()};
    const Smisd smisd(array.state());
    const Client client(smisd);
    const std::string service = "CIM_StorageHardwareIDManagementService";
    EXPECT_THAT(client.enumerate(service).each("SystemName"), ElementsAre("localhost"));
    array.arrayctl({"import", "-"}, R"({"host": "late.example.com", "system": "late"})");
    EXPECT_THAT(client.enumerate(service).each("SystemName"), ElementsAre("late"));
}

} // namespace
} // namespace wire
