// The provider registration in mof/ against the module's factory and the class declarations.

#include <memory>
#include <string>
#include <vector>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "providers/frame/PegasusCreateProvider.h"
#include "server/dispatch/Registration.h"
#include "server/operation/Utf8.h"
#include "server/schema/MofReader.h"

using namespace Pegasus;
using testing::ElementsAre;

namespace smisd {
namespace {

const Repository& repository() {
    static const Repository filled = [] {
        Repository result;
        readMofDirectory(MOF_DIRECTORY, result);
        return result;
    }();
    return filled;
}

const std::vector<CIMInstance>& instances() {
    return repository().find(CIMNamespaceName(interopNamespace))->instances();
}

const Schema& elements() {
    return *repository().find(CIMNamespaceName(elementNamespace));
}

template<class T>
T valueOf(const CIMInstance& instance, const char* property) {
    T value;
    instance.getProperty(instance.findProperty(CIMName(property))).getValue().get(value);
    return value;
}

std::string textOf(const CIMInstance& instance, const char* property) {
    return toUtf8(valueOf<String>(instance, property));
}

// One PG_ProviderCapabilities.
struct Served {
    std::string provider;
    CIMName className;
    std::string types;
};

std::vector<Served> served() {
    std::vector<Served> result;
    for (const CIMInstance& instance : instances()) {
        if (instance.getClassName() != CIMName("PG_ProviderCapabilities")) {
            continue;
        }
        std::string types;
        const auto numbers = valueOf<Array<Uint16>>(instance, "ProviderType");
        for (Uint32 i = 0; i < numbers.size(); ++i) {
            types += (i ? " " : "") + std::to_string(numbers[i]);
        }
        result.push_back({textOf(instance, "ProviderName"),
                          CIMName(valueOf<String>(instance, "ClassName")), types});
    }
    return result;
}

TEST(AccessRegistration, IsOneThatTheServerAccepts) {
    EXPECT_EQ(Registration(instances()).moduleName(), String("AccessProvidersModule"));
}

TEST(AccessRegistration, NamesTheModule) {
    std::vector<CIMInstance> modules;
    for (const CIMInstance& instance : instances()) {
        if (instance.getClassName() == CIMName("PG_ProviderModule")) {
            modules.push_back(instance);
        }
    }
    ASSERT_EQ(modules.size(), 1U);
    const CIMInstance& module = modules[0];
    EXPECT_EQ(textOf(module, "Location"), "AccessProviders");
    EXPECT_EQ(textOf(module, "InterfaceType"), "C++Default");
    EXPECT_EQ(textOf(module, "InterfaceVersion"), "2.5.0");
}

TEST(AccessRegistration, NamesTheProvidersOfTheModule) {
    const Registration registration(instances());
    std::vector<std::string> names;
    for (const String& name : registration.providerNames()) {
        names.push_back(toUtf8(name));
    }
    EXPECT_THAT(names,
                ElementsAre("StorageHardwareIDManagementServiceProvider",
                            "StorageHardwareIDProvider", "AuthorizedAccessProvider",
                            "SharedSecretProvider", "ControllerConfigurationServiceProvider",
                            "SCSIProtocolControllerProvider", "ProtocolControllerForUnitProvider",
                            "iSCSISettingsProvider", "iSCSIPipesProvider"));
}

TEST(AccessRegistration, ListsWhatEachProviderServes) {
    std::vector<std::string> lines;
    for (const Served& one : served()) {
        lines.push_back(one.provider + " " + toUtf8(one.className.getString()) + " " + one.types);
    }
    EXPECT_THAT(
        lines,
        ElementsAre("StorageHardwareIDManagementServiceProvider "
                    "CIM_StorageHardwareIDManagementService 2 5",
                    "StorageHardwareIDProvider CIM_StorageHardwareID 2",
                    "AuthorizedAccessProvider CIM_AuthorizedSubject 2 3",
                    "AuthorizedAccessProvider CIM_AuthorizedTarget 2 3",
                    "AuthorizedAccessProvider CIM_AuthorizedPrivilege 2",
                    "SharedSecretProvider CIM_SharedSecret 2",
                    "ControllerConfigurationServiceProvider CIM_ControllerConfigurationService 2 5",
                    "SCSIProtocolControllerProvider CIM_SCSIProtocolController 2",
                    "ProtocolControllerForUnitProvider CIM_ProtocolControllerForUnit 2 3",
                    "iSCSISettingsProvider CIM_iSCSISessionSettings 2",
                    "iSCSISettingsProvider CIM_iSCSIConnectionSettings 2",
                    "iSCSISettingsProvider CIM_iSCSILoginStatistics 2",
                    "iSCSISettingsProvider CIM_iSCSISessionFailures 2",
                    "iSCSISettingsProvider CIM_iSCSISessionStatistics 2",
                    "iSCSISettingsProvider Ovrin_MACStatistics 2",
                    "iSCSIPipesProvider CIM_iSCSISession 2",
                    "iSCSIPipesProvider CIM_iSCSIConnection 2",
                    "iSCSIPipesProvider CIM_EndpointOfNetworkPipe 2 3",
                    "iSCSIPipesProvider CIM_NetworkPipeComposition 2 3"));
}

TEST(AccessRegistration, EachProviderIsMadeByTheModuleAndHasTheInterfaces) {
    for (const Served& one : served()) {
        const std::unique_ptr<CIMProvider> made(
            PegasusCreateProvider(String(one.provider.c_str())));
        ASSERT_NE(made, nullptr) << one.provider;
        const auto has = [&](const char* type) {
            return one.types.find(type) != std::string::npos;
        };
        EXPECT_EQ(has("2"), dynamic_cast<CIMInstanceProvider*>(made.get()) != nullptr)
            << one.provider;
        EXPECT_TRUE(!has("3") || dynamic_cast<CIMAssociationProvider*>(made.get())) << one.provider;
        EXPECT_EQ(has("5"), dynamic_cast<CIMMethodProvider*>(made.get()) != nullptr)
            << one.provider;
    }
}

TEST(AccessRegistration, EachServedClassIsDeclaredAndFitsItsTypes) {
    for (const Served& one : served()) {
        const CIMClass* declared = elements().findClass(one.className);
        ASSERT_NE(declared, nullptr) << toUtf8(one.className.getString());
        EXPECT_FALSE(declared->isAbstract()) << toUtf8(one.className.getString());
        EXPECT_EQ(declared->isAssociation(), one.types.find('3') != std::string::npos)
            << toUtf8(one.className.getString());
    }
}

} // namespace
} // namespace smisd
