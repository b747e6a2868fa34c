#include "server/module/ProviderLibrary.h"

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using namespace Pegasus;
using testing::StartsWith;

namespace smisd {
namespace {

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
