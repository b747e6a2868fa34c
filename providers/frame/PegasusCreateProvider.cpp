#include "providers/frame/PegasusCreateProvider.h"

#include "providers/frame/Announcements.h"
#include "providers/identity/AuthorizedAccessProvider.h"
#include "providers/identity/SharedSecretProvider.h"
#include "providers/identity/StorageHardwareIDManagementService.h"
#include "providers/identity/StorageHardwareIDProvider.h"
#include "providers/iscsi/iSCSIPipesProvider.h"
#include "providers/iscsi/iSCSISettingsProvider.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/ProtocolControllerForUnitProvider.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"

namespace Pegasus {

namespace {

template<class Provider>
CIMProvider* make() {
    return new Provider;
}

struct Row {
    const char* name;
    const char* startUpLine;
    CIMProvider* (*make)();
};

// Wanted: see docs/contract.md, Start-up lines.
constexpr Row providers[] = {
    {"StorageHardwareIDManagementServiceProvider",
     "Starting up the StorageHardwareIDManagementService provider",
     make<StorageHardwareIDManagementServiceProvider>},
    {"StorageHardwareIDProvider", "Starting up the StorageHardwareID provider",
     make<StorageHardwareIDProvider>},
    {"AuthorizedAccessProvider", "Starting up the AuthorizedAccess provider",
     make<AuthorizedAccessProvider>},
    {"SharedSecretProvider", "Starting up the Shared Secret provider", make<SharedSecretProvider>},
    {"ControllerConfigurationServiceProvider",
     "Starting up the ControllerConfigurationService provider",
     make<ControllerConfigurationServiceProvider>},
    {"SCSIProtocolControllerProvider", "Starting up the SCSIProtocolController provider",
     make<SCSIProtocolControllerProvider>},
    {"ProtocolControllerForUnitProvider", "Starting up the ProtocolControllerForUnit provider",
     make<ProtocolControllerForUnitProvider>},
    {"iSCSISettingsProvider", "Starting up the iSCSI Settings provider",
     make<iSCSISettingsProvider>},
    {"iSCSIPipesProvider", "Starting up the iSCSI Pipes provider", make<iSCSIPipesProvider>},
};

} // namespace

} // namespace Pegasus

Pegasus::CIMProvider* PegasusCreateProvider(const Pegasus::String& providerName) {
    using namespace Pegasus;
    for (const Row& row : providers) {
        if (String::equalNoCase(providerName, row.name)) {
            trace(row.startUpLine);
            return row.make();
        }
    }
    return nullptr;
}
