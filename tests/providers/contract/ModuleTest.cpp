// The module as a CIM server loads it: every symbol resolved at once, one entry point.

#include <dlfcn.h>
#include <memory>

#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <gtest/gtest.h>

using namespace Pegasus;

namespace {

TEST(ModuleTest, IsLoadedAndGivesAllProvidersThroughItsEntryPoint) {
    void* const module = dlopen(ACCESS_PROVIDERS_MODULE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_TRUE(module) << dlerror();
    const auto create =
        reinterpret_cast<CIMProvider* (*)(const String&)>(dlsym(module, "PegasusCreateProvider"));
    ASSERT_TRUE(create) << dlerror();

    for (const char* name :
         {"StorageHardwareIDManagementServiceProvider", "StorageHardwareIDProvider",
          "AuthorizedAccessProvider", "SharedSecretProvider",
          "ControllerConfigurationServiceProvider", "SCSIProtocolControllerProvider",
          "ProtocolControllerForUnitProvider", "iSCSISettingsProvider", "iSCSIPipesProvider"}) {
        const std::unique_ptr<CIMProvider> provider(create(name));
        EXPECT_TRUE(dynamic_cast<CIMInstanceProvider*>(provider.get())) << name;
        CIMOMHandle handle;
        provider->initialize(handle);
        provider->terminate();
    }
    EXPECT_FALSE(create("StorageHardwareID"));
}

} // namespace
