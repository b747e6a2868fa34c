#include "server/module/ProviderManager.h"

#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/ProviderException.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "server/module/ResponseHandlers.h"

using namespace Pegasus;
using testing::StartsWith;

namespace smisd {
namespace {

// What the providers of the module have logged since the last call.
std::string takeLog() {
    void* module = dlopen(SCRIPTED_MODULE, RTLD_NOW | RTLD_NOLOAD);
    if (!module) {
        return "";
    }
    const auto take = reinterpret_cast<const char* (*)()>(dlsym(module, "takeScriptedLog"));
    const std::string log = take();
    dlclose(module);
    return log;
}

class ProviderManagerTest : public testing::Test {
protected:
    ProviderManagerTest() { takeLog(); }

    std::string errorOf(const char* name) {
        try {
            manager.provider(String(name));
        } catch (const CIMException& error) {
            EXPECT_EQ(error.getCode(), CIM_ERR_FAILED);
            return std::string(error.getMessage().getCString());
        }
        return "";
    }

    ProviderManager manager{SCRIPTED_MODULE, String("M"), CIMOMHandle()};
};

TEST_F(ProviderManagerTest, AProviderIsMadeAndInitializedOnce) {
    CIMProvider& first = manager.provider(String("InstanceOnly"));
    EXPECT_EQ(&manager.provider(String("InstanceOnly")), &first);
    EXPECT_EQ(takeLog(), "initialize\n");
}

TEST_F(ProviderManagerTest, ThreadsThatMeetGetTheSameInitializedProvider) {
    std::vector<std::future<CIMProvider*>> calls;
    for (int i = 0; i < 16; ++i) {
        calls.push_back(std::async(std::launch::async,
                                   [&] { return &manager.provider(String("InstanceOnly")); }));
    }
    std::set<CIMProvider*> providers;
    for (auto& call : calls) {
        providers.insert(call.get());
    }
    EXPECT_EQ(providers.size(), 1U);
    EXPECT_EQ(takeLog(), "initialize\n");
}

std::string logOfTheEndOf(const char* provider) {
    {
        ProviderManager manager(SCRIPTED_MODULE, String("M"), CIMOMHandle());
        manager.provider(String(provider));
        takeLog();
    }
    return takeLog();
}

TEST(ProviderManagerEnd, AProviderMayDeleteItselfWhenItIsTerminated) {
    EXPECT_EQ(logOfTheEndOf("InstanceOnly"), "terminate\ndelete\n");
}

TEST(ProviderManagerEnd, AProviderThatDoesNotDeleteItselfIsLeftAlone) {
    EXPECT_EQ(logOfTheEndOf("Stays"), "terminate\n");
}

TEST_F(ProviderManagerTest, AProviderWhoseInitializeThrowsIsTerminatedAndMadeAnew) {
    EXPECT_EQ(errorOf("FailsOnce"), "provider initialization failed");
    EXPECT_EQ(takeLog(), "terminate\ndelete\n");
    manager.provider(String("FailsOnce"));
    EXPECT_EQ(takeLog(), "initialize\n");
}

TEST_F(ProviderManagerTest, AProviderThatCannotBeMadeIsTriedAgain) {
    EXPECT_EQ(errorOf("ThrowsAtCreation"), "no room");
    EXPECT_EQ(errorOf("ThrowsAtCreation"), "no room");
}

TEST_F(ProviderManagerTest, ANameThatTheModuleDoesNotKnowFails) {
    EXPECT_EQ(errorOf("Unknown"),
              "ProviderLoadFailure (" SCRIPTED_MODULE ":Unknown):provider is not a CIMProvider.");
}

TEST(ProviderManagerWithoutModule, FailsAtEachRequest) {
    ProviderManager manager("/nonexistent/libNothing.so", String("M"), CIMOMHandle());
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW(manager.provider(String("P")), CIMException);
    }
}

// The error that a call ends with which throws so.
CIMException errorOf(const std::function<void()>& call) {
    try {
        callProvider(PlainHandler(), call);
    } catch (const CIMException& error) {
        return error;
    }
    return CIMException();
}

void expectError(const std::function<void()>& call, CIMStatusCode code, const char* text) {
    const CIMException error = errorOf(call);
    EXPECT_EQ(error.getCode(), code);
    EXPECT_EQ(error.getMessage(), String(text));
}

TEST(ProviderErrors, ACimExceptionKeepsCodeAndText) {
    expectError([] { throw CIMNotSupportedException(String("X::y")); }, CIM_ERR_NOT_SUPPORTED,
                "X::y");
    expectError([] { throw CIMException(CIM_ERR_NOT_FOUND); }, CIM_ERR_NOT_FOUND, "");
    expectError([] { throw CIMException(static_cast<CIMStatusCode>(28), String("X")); },
                static_cast<CIMStatusCode>(28), "X");
}

TEST(ProviderErrors, OtherExceptionsFailWithTheirText) {
    expectError([] { throw Exception(String("plain")); }, CIM_ERR_FAILED, "plain");
    expectError([] { throw IndexOutOfBoundsException(); }, CIM_ERR_FAILED, "index out of bounds");
    expectError([] { throw std::runtime_error("standard"); }, CIM_ERR_FAILED, "standard");
}

TEST(ProviderErrors, AnythingElseIsAnUnknownError) {
    expectError([] { throw 5; }, CIM_ERR_FAILED, "Unknown error.");
}

TEST(ProviderErrors, AnExceptionWithCodeSuccessEndsTheCall) {
    EXPECT_NO_THROW(callProvider(PlainHandler(),
                                 [] { throw CIMException(CIM_ERR_SUCCESS, String("ignored")); }));
}

TEST(ProviderErrors, WhatTheReceiverThrowsIsPassedOnAsItIs) {
    struct ClientIsGone {};
    PathListHandler handler([](const CIMObjectPath&) { throw ClientIsGone(); });
    const CIMObjectPath path(String(), CIMNamespaceName(), CIMName("X"));
    EXPECT_THROW(callProvider(handler,
                              [&] {
                                  handler.deliver(path);
                                  handler.complete();
                              }),
                 ClientIsGone);
}

TEST(ProviderErrors, WhatTheReceiverThrowsIsPassedOnAlsoIfTheProviderSwallowsIt) {
    struct ClientIsGone {};
    PathListHandler handler([](const CIMObjectPath&) { throw ClientIsGone(); });
    const CIMObjectPath path(String(), CIMNamespaceName(), CIMName("X"));
    const auto swallow = [&] {
        try {
            handler.deliver(path);
            handler.complete();
        } catch (...) {
        }
    };
    EXPECT_THROW(callProvider(handler, swallow), ClientIsGone);
    EXPECT_THROW(callProvider(handler,
                              [&] {
                                  swallow();
                                  throw Exception(String("something else"));
                              }),
                 ClientIsGone);
}

std::string errorOf(const std::filesystem::path& file, const char* provider) {
    try {
        ProviderLibrary(file, String("M")).create(String(provider));
    } catch (const Exception& error) {
        return std::string(error.getMessage().getCString());
    }
    return "";
}

TEST(ProviderLibrary, MakesProvidersByName) {
    ProviderLibrary library(SCRIPTED_MODULE, String("M"));
    const auto first = library.create(String("Scripted"));
    const auto second = library.create(String("Scripted"));
    EXPECT_NE(dynamic_cast<CIMInstanceProvider*>(first.get()), nullptr);
    EXPECT_NE(first, second);
}

TEST(ProviderLibrary, AMissingFileIsNamedWithTheModule) {
    EXPECT_EQ(errorOf("/nonexistent/libNothing.so", "P"),
              "File \"libNothing.so\" was not found for provider module \"M\".");
}

TEST(ProviderLibrary, AFileThatIsNoLibraryDoesNotLoad) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / "ProviderLibraryTest.so";
    std::ofstream(file) << "no library";
    EXPECT_THAT(errorOf(file, "P"), StartsWith("ProviderLoadFailure (" + file.string() +
                                               ":P):Cannot load library, error: "));
    std::filesystem::remove(file);
}

TEST(ProviderLibrary, ALibraryWithoutEntryPointIsRefused) {
    EXPECT_EQ(errorOf(EMPTY_MODULE, "P"),
              "ProviderLoadFailure (" EMPTY_MODULE ":P):entry point not found.");
}

TEST(ProviderLibrary, ANameThatTheLibraryDoesNotKnowIsNoProvider) {
    EXPECT_EQ(errorOf(SCRIPTED_MODULE, "Unknown"),
              "ProviderLoadFailure (" SCRIPTED_MODULE ":Unknown):provider is not a CIMProvider.");
}

TEST(ProviderLibrary, WhatTheEntryPointThrowsPassesThrough) {
    EXPECT_EQ(errorOf(SCRIPTED_MODULE, "ThrowsAtCreation"), "no room");
}

} // namespace
} // namespace smisd
