// The shape of the provider classes: their bases in order, and two members.

#include <type_traits>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <gtest/gtest.h>

#include "providers/identity/AuthorizedAccessProvider.h"
#include "providers/identity/SharedSecretProvider.h"
#include "providers/identity/StorageHardwareIDManagementService.h"
#include "providers/identity/StorageHardwareIDProvider.h"
#include "providers/iscsi/iSCSIPipesProvider.h"
#include "providers/iscsi/iSCSISettingsProvider.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/ProtocolControllerForUnitProvider.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"

using namespace Pegasus;

namespace {

// A provider of these bases with the two members and nothing else.
template<class... Bases>
class Twin : public Bases... {
    [[maybe_unused]] DRAVEngine* _engine;
    CIMOMHandle _cimom;
};

template<class Provider, class... Bases>
void expectShape() {
    static_assert((std::is_convertible_v<Provider*, Bases*> && ...));
    static_assert(std::is_base_of_v<CIMInstanceProvider, Provider>);
    static_assert(std::is_convertible_v<Provider*, CIMProvider*>, "only one CIMProvider");
    static_assert(sizeof(Provider) == sizeof(Twin<Bases...>));
    static_assert(!std::is_final_v<Provider> && std::is_default_constructible_v<Provider>);

    // The bases lie in the order of their declaration, the first one at the beginning.
    Provider provider;
    const void* previous = &provider;
    bool first = true;
    const auto expectNext = [&](const void* base) {
        if (first) {
            EXPECT_EQ(base, previous);
        } else {
            EXPECT_GT(base, previous);
        }
        previous = base;
        first = false;
    };
    (expectNext(static_cast<Bases*>(&provider)), ...);

    CIMProvider* const single = &provider;
    EXPECT_EQ(dynamic_cast<Provider*>(single), &provider);
}

template<class Provider, class Interface>
constexpr bool lacks = !std::is_base_of_v<Interface, Provider>;

TEST(ProviderClassesTest, ServicesAreInstanceAndMethodProviders) {
    expectShape<StorageHardwareIDManagementServiceProvider, CIMInstanceProvider,
                CIMMethodProvider>();
    expectShape<ControllerConfigurationServiceProvider, CIMInstanceProvider, CIMMethodProvider>();
    static_assert(lacks<StorageHardwareIDManagementServiceProvider, CIMAssociationProvider>);
    static_assert(lacks<ControllerConfigurationServiceProvider, CIMAssociationProvider>);
}

TEST(ProviderClassesTest, FourAreInstanceProvidersOnly) {
    expectShape<StorageHardwareIDProvider, CIMInstanceProvider>();
    expectShape<SharedSecretProvider, CIMInstanceProvider>();
    expectShape<SCSIProtocolControllerProvider, CIMInstanceProvider>();
    expectShape<iSCSISettingsProvider, CIMInstanceProvider>();
}

TEST(ProviderClassesTest, AuthorizedAccessAndProtocolControllerForUnitAreAssociationsFirst) {
    expectShape<AuthorizedAccessProvider, CIMAssociationProvider, CIMInstanceProvider>();
    expectShape<ProtocolControllerForUnitProvider, CIMAssociationProvider, CIMInstanceProvider>();
    static_assert(lacks<AuthorizedAccessProvider, CIMMethodProvider>);
    static_assert(lacks<ProtocolControllerForUnitProvider, CIMMethodProvider>);
}

TEST(ProviderClassesTest, PipesAreInstancesFirst) {
    expectShape<iSCSIPipesProvider, CIMInstanceProvider, CIMAssociationProvider>();
    static_assert(lacks<iSCSIPipesProvider, CIMMethodProvider>);
}

} // namespace
