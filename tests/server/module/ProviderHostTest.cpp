#include "server/module/ProviderHost.h"

#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

#include <future>
#include <set>
#include <string>
#include <vector>

#include <dlfcn.h>

using namespace Pegasus;

namespace smisd {
namespace {

// What the providers of the module have logged since the last call.
std::string takeLog() {
    void* module = dlopen(SCRIPTED_MODULE, RTLD_NOW | RTLD_NOLOAD);
    if (!module)
        return "";
    const auto take = reinterpret_cast<const char* (*)()>(dlsym(module, "takeScriptedLog"));
    const std::string log = take();
    dlclose(module);
    return log;
}

class ProviderHostTest : public testing::Test {
protected:
    ProviderHostTest() { takeLog(); }

    std::string errorOf(const char* name) {
        try {
            host.provider(String(name));
        } catch (const CIMException& error) {
            EXPECT_EQ(error.getCode(), CIM_ERR_FAILED);
            return std::string(error.getMessage().getCString());
        }
        return "";
    }

    ProviderHost host{SCRIPTED_MODULE, String("M"), CIMOMHandle()};
};

TEST_F(ProviderHostTest, AProviderIsMadeAndInitializedOnce) {
    CIMProvider& first = host.provider(String("InstanceOnly"));
    EXPECT_EQ(&host.provider(String("InstanceOnly")), &first);
    EXPECT_EQ(takeLog(), "initialize\n");
}

TEST_F(ProviderHostTest, ThreadsThatMeetGetTheSameInitializedProvider) {
    std::vector<std::future<CIMProvider*>> calls;
    for (int i = 0; i < 16; ++i)
        calls.push_back(
            std::async(std::launch::async, [&] { return &host.provider(String("InstanceOnly")); }));
    std::set<CIMProvider*> providers;
    for (auto& call : calls)
        providers.insert(call.get());
    EXPECT_EQ(providers.size(), 1U);
    EXPECT_EQ(takeLog(), "initialize\n");
}

std::string logOfTheEndOf(const char* provider) {
    {
        ProviderHost host(SCRIPTED_MODULE, String("M"), CIMOMHandle());
        host.provider(String(provider));
        takeLog();
    }
    return takeLog();
}

TEST(ProviderHostEnd, AProviderMayDeleteItselfWhenItIsTerminated) {
    EXPECT_EQ(logOfTheEndOf("InstanceOnly"), "terminate\ndelete\n");
}

TEST(ProviderHostEnd, AProviderThatDoesNotDeleteItselfIsLeftAlone) {
    EXPECT_EQ(logOfTheEndOf("Stays"), "terminate\n");
}

TEST_F(ProviderHostTest, AProviderWhoseInitializeThrowsIsTerminatedAndMadeAnew) {
    EXPECT_EQ(errorOf("FailsOnce"), "provider initialization failed");
    EXPECT_EQ(takeLog(), "terminate\ndelete\n");
    host.provider(String("FailsOnce"));
    EXPECT_EQ(takeLog(), "initialize\n");
}

TEST_F(ProviderHostTest, AProviderThatCannotBeMadeIsTriedAgain) {
    EXPECT_EQ(errorOf("ThrowsAtCreation"), "no room");
    EXPECT_EQ(errorOf("ThrowsAtCreation"), "no room");
}

TEST_F(ProviderHostTest, ANameThatTheModuleDoesNotKnowFails) {
    EXPECT_EQ(errorOf("Unknown"),
              "ProviderLoadFailure (" SCRIPTED_MODULE ":Unknown):provider is not a CIMProvider.");
}

TEST(ProviderHostWithoutModule, FailsAtEachRequest) {
    ProviderHost host("/nonexistent/libNothing.so", String("M"), CIMOMHandle());
    for (int i = 0; i < 2; ++i)
        EXPECT_THROW(host.provider(String("P")), CIMException);
}

} // namespace
} // namespace smisd
