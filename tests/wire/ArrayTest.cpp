// An array whose state directory is not good at the start of the server.
#include "tests/wire/support/Array.h"

#include <filesystem>
#include <fstream>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Client.h"
#include "tests/wire/support/Smisd.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace fs = std::filesystem;

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

// What is wrong with a state directory, and how its owner repairs it.
struct Damage {
    const char* name;
    const char* says; // in the errors of operations
    std::function<void(const fs::path& state)> damage;
    std::function<void(const fs::path& state)> repair;
};

void allowToRead(const fs::path& state, fs::perms others) {
    fs::permissions(state, fs::perms::owner_all | others);
}

const Damage damages[] = {
    {"DirectoryThatOthersMayRead", "chmod 700",
     [](const fs::path& state) {
         allowToRead(state, fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read |
                                fs::perms::others_exec);
     },
     [](const fs::path& state) { allowToRead(state, fs::perms::none); }},
    {"FileThatIsNoDatabase", "array.db",
     [](const fs::path& state) {
         fs::rename(state / "array.db", state / "good");
         std::ofstream(state / "array.db") << std::string(8192, 'x');
         fs::permissions(state / "array.db", fs::perms::owner_read | fs::perms::owner_write);
     },
     [](const fs::path& state) { fs::rename(state / "good", state / "array.db"); }},
};

class DamagedArray : public testing::TestWithParam<Damage> {};

TEST_P(DamagedArray, ThatIsRepairedAfterTheStartIsServedAtOnce) {
    const Array array;
    GetParam().damage(array.state());
    const Smisd smisd(array.state());
    const Client client(smisd);
    const std::string service = "CIM_StorageHardwareIDManagementService";
    const std::string hosts = "CIM_StorageHardwareID";
    EXPECT_THAT(client.enumerate(service).each("SystemName"), ElementsAre("localhost"));
    EXPECT_THAT(client.enumerate(hosts).error(), HasSubstr(GetParam().says));
    GetParam().repair(array.state());
    EXPECT_THAT(client.enumerate(service).each("SystemName"), ElementsAre("array1"));
    EXPECT_THAT(client.enumerate(hosts).each("StorageID"), SizeIs(3));
}

INSTANTIATE_TEST_SUITE_P(All, DamagedArray, testing::ValuesIn(damages),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace wire
