// A client's first questions, asked by a real one that knows the interop namespace alone.
#include "tests/wire/support/Array.h"
#include "tests/wire/support/Smisd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::HasSubstr;

namespace wire {
namespace {

TEST(Discovery, LeadsFromTheInteropNamespaceToTheHosts) {
    const Array array;
    const Smisd smisd(array.state());
    const std::string server = "http://127.0.0.1:" + std::to_string(smisd.port()) + "/";
    EXPECT_THAT(run({"wbemcli", "ein", server + "interop:CIM_ObjectManager"}).out,
                HasSubstr("Name=\"smisd\""));
    const std::string names = run({"wbemcli", "ein", server + "interop:CIM_Namespace"}).out;
    const std::size_t at = names.find(",Name=\"root/snia");
    ASSERT_NE(at, std::string::npos) << names;
    const std::size_t start = names.find('"', at) + 1;
    const std::string found = names.substr(start, names.find('"', start) - start);
    EXPECT_THAT(run({"wbemcli", "ein", server + found + ":CIM_StorageHardwareID"}).out,
                HasSubstr("Ovrin:0D000003"));
    EXPECT_THAT(run({"wbemcli", "ei", server + "interop:CIM_RegisteredProfile"}).out,
                HasSubstr("RegisteredName=\"Masking and Mapping\""));
}

} // namespace
} // namespace wire
