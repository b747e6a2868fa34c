#include "server/dispatch/Registration.h"

#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "server/schema/MofReader.h"
#include "tests/server/schema/TemporaryMof.h"

using namespace Pegasus;
using testing::ElementsAre;

namespace smisd {
namespace {

const char* const module = R"(instance of PG_ProviderModule { Name = "M"; Vendor = "V";
    Version = "1"; InterfaceType = "C++Default"; InterfaceVersion = "2.5.0"; Location = "L"; };)";
const char* const provider =
    R"(instance of PG_Provider { ProviderModuleName = "M"; Name = "P"; };)";
const char* const capabilities = R"(instance of PG_ProviderCapabilities { ProviderModuleName = "M";
    ProviderName = "P"; CapabilityID = "C"; ClassName = "X"; Namespaces = {"root/a", "root/b"};
    ProviderType = {2, 3}; };)";

Registration read(const std::string& text) {
    const TemporaryMof files;
    Repository repository;
    const CIMNamespaceName interop(interopNamespace);
    readMof(std::filesystem::path(MOF_DIRECTORY) / "interop-schema.mof", interop, repository);
    readMof(files.write("registration.mof", text), interop, repository);
    return Registration(repository.find(interop)->instances());
}

std::string providerOf(const Registration& registration, const char* nameSpace,
                       const char* className, ProviderType type) {
    const String* found = registration.find(CIMNamespaceName(nameSpace), CIMName(className), type);
    return found ? std::string(found->getCString()) : "";
}

TEST(Registration, NamesModuleAndProviders) {
    const Registration registration =
        read(std::string(module) + provider +
             R"(instance of PG_Provider { ProviderModuleName = "M"; Name = "Q"; };)");
    EXPECT_EQ(registration.moduleName(), String("M"));
    EXPECT_THAT(registration.providerNames(), ElementsAre(String("P"), String("Q")));
}

TEST(Registration, AProviderServesAClassInNamespacesForTypes) {
    const Registration registration = read(std::string(module) + provider + capabilities);
    EXPECT_EQ(providerOf(registration, "root/a", "X", ProviderType::instance), "P");
    EXPECT_EQ(providerOf(registration, "ROOT/B", "x", ProviderType::association), "P");
    EXPECT_EQ(providerOf(registration, "root/a", "X", ProviderType::method), "");
    EXPECT_EQ(providerOf(registration, "root/a", "Y", ProviderType::instance), "");
    EXPECT_EQ(providerOf(registration, "root/c", "X", ProviderType::instance), "");
}

TEST(Registration, CapabilitiesOfOtherKindsAreAccepted) {
    const Registration registration =
        read(std::string(module) + provider +
             R"(instance of PG_ProviderCapabilities { ProviderModuleName = "M"; ProviderName = "P";
                CapabilityID = "C"; ClassName = "X"; Namespaces = {"root/a"};
                ProviderType = {4, 7}; };)");
    EXPECT_EQ(providerOf(registration, "root/a", "X", ProviderType::instance), "");
}

struct Mistake {
    const char* name;
    std::string text;
    const char* report;
};

void PrintTo(const Mistake& mistake, std::ostream* out) {
    *out << mistake.name;
}

class RegistrationMistake : public testing::TestWithParam<Mistake> {};

TEST_P(RegistrationMistake, IsReportedWithTheInstance) {
    try {
        read(GetParam().text);
        FAIL() << "no mistake was found";
    } catch (const RegistrationError& error) {
        EXPECT_STREQ(error.what(), GetParam().report);
    }
}

std::string capabilitiesWith(const char* properties) {
    return std::string(module) + provider + "instance of PG_ProviderCapabilities { " + properties +
           " };";
}

const Mistake mistakes[] = {
    {"NoModule", "", "No PG_ProviderModule is registered."},
    {"TwoModules", std::string(module) + module,
     "PG_ProviderModule M: the server has only one module, M."},
    {"ModuleWithoutLocation",
     R"(instance of PG_ProviderModule { Name = "M"; Vendor = "V"; Version = "1";
        InterfaceType = "C++Default"; InterfaceVersion = "2.5.0"; };)",
     "Missing Location which is required property in PG_ProviderModule class."},
    {"ModuleWithNullVendor",
     R"(instance of PG_ProviderModule { Name = "M"; Vendor = null; Version = "1";
        InterfaceType = "C++Default"; InterfaceVersion = "2.5.0"; Location = "L"; };)",
     "Missing Vendor which is required property in PG_ProviderModule class."},
    {"OtherInterface", R"(instance of PG_ProviderModule { Name = "M"; InterfaceType = "CMPI"; };)",
     "PG_ProviderModule M: Unsupported InterfaceType value: \"CMPI\"."},
    {"OtherVersion",
     R"(instance of PG_ProviderModule { Name = "M"; InterfaceType = "C++Default";
        InterfaceVersion = "2.4.0"; };)",
     "PG_ProviderModule M: Unsupported InterfaceVersion value: \"2.4.0\"."},
    {"ProviderOfUnknownModule", provider,
     "PG_Provider M: the module of this name is not registered."},
    {"ProviderTwice", std::string(module) + provider + provider,
     "PG_Provider P: registered twice."},
    {"CapabilitiesOfUnknownProvider",
     capabilitiesWith(R"(ProviderModuleName = "M"; ProviderName = "Q"; CapabilityID = "C";)"),
     "PG_ProviderCapabilities C: the provider Q is not registered."},
    {"CapabilitiesWithoutNamespaces",
     capabilitiesWith(R"(ProviderModuleName = "M"; ProviderName = "P"; CapabilityID = "C";
                         ClassName = "X"; ProviderType = {2};)"),
     "Missing Namespaces which is required property in PG_ProviderCapabilities class."},
    {"UnknownType",
     capabilitiesWith(R"(ProviderModuleName = "M"; ProviderName = "P"; CapabilityID = "C";
                         ClassName = "X"; Namespaces = {"root/a"}; ProviderType = {9};)"),
     "PG_ProviderCapabilities C: no ProviderType has the number 9."},
    {"ServedTwice", std::string(module) + provider + capabilities + capabilities,
     "PG_ProviderCapabilities C: A provider is already registered for the specified capability."},
};

INSTANTIATE_TEST_SUITE_P(Registration, RegistrationMistake, testing::ValuesIn(mistakes),
                         [](const testing::TestParamInfo<Mistake>& mistake) {
                             return mistake.param.name;
                         });

} // namespace
} // namespace smisd
