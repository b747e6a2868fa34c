#include <functional>
#include <map>
#include <memory>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include "providers/frame/PegasusCreateProvider.h"
#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;

namespace {

// What a client may not do, provider by provider.
struct Refusal {
    std::string provider;
    std::string operation;
    std::string text;
    std::string line = {};        // written to standard output first
    int eventLine = 0;            // of an event that is published first; 0: none
    std::string eventSource = {}; // its source file
};

const Refusal REFUSALS[] = {
    {"StorageHardwareIDManagementServiceProvider", "modifyInstance",
     "StorageHardwareIDManagementService::modifyInstance", "", 183,
     "StorageHardwareIDManagementService.cpp"},
    {"StorageHardwareIDManagementServiceProvider", "createInstance",
     "StorageHardwareIDManagementService::createInstance", "", 197,
     "StorageHardwareIDManagementService.cpp"},
    {"StorageHardwareIDManagementServiceProvider", "deleteInstance",
     "StorageHardwareIDManagementService::deleteInstance", "", 210,
     "StorageHardwareIDManagementService.cpp"},
    {"StorageHardwareIDProvider", "modifyInstance", "StorageHardwareID::modifyInstance"},
    {"StorageHardwareIDProvider", "createInstance", "StorageHardwareID::createInstance"},
    {"StorageHardwareIDProvider", "deleteInstance", "StorageHardwareID::deleteInstance"},
    {"AuthorizedAccessProvider", "references", "AuthorizedAccess::references"},
    {"AuthorizedAccessProvider", "referenceNames", "AuthorizedAccess::referenceNames"},
    {"AuthorizedAccessProvider", "getInstance", "AuthorizedAccess::getInstance",
     "===> In AuthorizedAccessProvider::getInstance"},
    {"AuthorizedAccessProvider", "enumerateInstances", "AuthorizedAccess::enumerateInstances"},
    {"AuthorizedAccessProvider", "enumerateInstanceNames",
     "AuthorizedAccess::enumerateInstanceNames"},
    {"AuthorizedAccessProvider", "modifyInstance", "AuthorizedAccess::modifyInstance"},
    {"AuthorizedAccessProvider", "createInstance", "AuthorizedAccess::createInstance"},
    {"AuthorizedAccessProvider", "deleteInstance", "AuthorizedAccess::deleteInstance"},
    {"SharedSecretProvider", "enumerateInstances", "SharedSecret::enumerateInstances"},
    {"SharedSecretProvider", "enumerateInstanceNames", "SharedSecret::enumerateInstanceNames"},
    {"SharedSecretProvider", "createInstance", "SharedSecret::createInstance"},
    {"SharedSecretProvider", "deleteInstance", "SharedSecret::deleteInstance"},
    {"ControllerConfigurationServiceProvider", "modifyInstance",
     "ControllerConfigurationService::modifyInstance", "", 210,
     "ControllerConfigurationService.cpp"},
    {"ControllerConfigurationServiceProvider", "createInstance",
     "ControllerConfigurationService::createInstance", "", 224,
     "ControllerConfigurationService.cpp"},
    {"ControllerConfigurationServiceProvider", "deleteInstance",
     "ControllerConfigurationService::deleteInstance", "", 237,
     "ControllerConfigurationService.cpp"},
    {"SCSIProtocolControllerProvider", "modifyInstance", "SCSIProtocolController::modifyInstance"},
    {"SCSIProtocolControllerProvider", "createInstance", "SCSIProtocolController::createInstance"},
    {"SCSIProtocolControllerProvider", "deleteInstance", "SCSIProtocolController::deleteInstance"},
    {"ProtocolControllerForUnitProvider", "createInstance",
     "ProtocolControllerForUnit::createInstance"},
    {"ProtocolControllerForUnitProvider", "deleteInstance",
     "ProtocolControllerForUnit::deleteInstance"},
    {"iSCSISettingsProvider", "enumerateInstanceNames", "iSCSISettings::enumerateInstanceNames"},
    {"iSCSISettingsProvider", "createInstance", "iSCSISettings::createInstance"},
    {"iSCSISettingsProvider", "deleteInstance", "iSCSISettings::deleteInstance"},
    {"iSCSIPipesProvider", "modifyInstance", "iSCSIPipes::modifyInstance",
     "iSCSISettingsProvider::modifyInstance"},
    {"iSCSIPipesProvider", "createInstance", "iSCSISettings::createInstance"},
    {"iSCSIPipesProvider", "deleteInstance", "iSCSISettings::deleteInstance"},
};

const std::string PATH = "//client.example.com/root/snia:CIM_Some.Key=\"a\\\"b\"";

// Calls an operation by its name.
void call(CIMProvider& provider, const std::string& operation) {
    auto& instances = dynamic_cast<CIMInstanceProvider&>(provider);
    auto* associations = dynamic_cast<CIMAssociationProvider*>(&provider);
    const OperationContext context;
    const CIMPropertyList all;
    const CIMObjectPath path = requestPath("CIM_Some", {{"Key", "a\"b"}});
    const CIMInstance instance("CIM_Some");
    PlainHandler plain;
    InstanceHandler instanceHandler;
    ObjectPathHandler pathHandler;
    ObjectHandler objectHandler;

    const std::map<std::string, std::function<void()>> operations = {
        {"getInstance",
         [&] { instances.getInstance(context, path, false, false, all, instanceHandler); }},
        {"enumerateInstances",
         [&] { instances.enumerateInstances(context, path, false, false, all, instanceHandler); }},
        {"enumerateInstanceNames",
         [&] { instances.enumerateInstanceNames(context, path, pathHandler); }},
        {"modifyInstance",
         [&] { instances.modifyInstance(context, path, instance, false, all, plain); }},
        {"createInstance", [&] { instances.createInstance(context, path, instance, pathHandler); }},
        {"deleteInstance", [&] { instances.deleteInstance(context, path, plain); }},
        {"references",
         [&] {
             associations->references(context, path, CIMName(), "", false, false, all,
                                      objectHandler);
         }},
        {"referenceNames",
         [&] { associations->referenceNames(context, path, CIMName(), "", pathHandler); }},
    };
    operations.at(operation)();
}

class RefusalTest : public testing::TestWithParam<Refusal> {
protected:
    RefusalTest() {
        provider.reset(PegasusCreateProvider(GetParam().provider.c_str()));
        CIMOMHandle handle;
        provider->initialize(handle);
        resetEngine();
    }

    TraceCapture capture;
    std::unique_ptr<CIMProvider> provider;
};

TEST_P(RefusalTest, AnnouncesItselfAndThrowsWithoutTouchingTheHandler) {
    const Refusal& row = GetParam();
    const std::string announcement =
        "Unimplemented method invoked " + row.provider + "::" + row.operation + "()";

    EXPECT_EQ(thrownBy<CIMNotSupportedException>([&] { call(*provider, row.operation); }),
              row.text);

    std::vector<std::string> entries;
    std::vector<Event> published;
    if (row.eventLine != 0) {
        entries.push_back("event " + announcement);
        published.push_back({0, EMP_TYPE_UNIMPLEMENTED, announcement, "instanceReference=" + PATH,
                             29, row.eventLine, row.operation, row.eventSource});
    }
    if (!row.line.empty()) {
        entries.push_back("trace " + row.line);
    }
    EXPECT_EQ(log(), entries);
    EXPECT_EQ(events(), published);
    EXPECT_EQ(EMP_TYPE_UNIMPLEMENTED, 2);
}

INSTANTIATE_TEST_SUITE_P(All, RefusalTest, testing::ValuesIn(REFUSALS), [](const auto& row) {
    return row.param.provider + "_" + row.param.operation;
});

TEST(RefusalsTest, ThereAre32) {
    EXPECT_EQ(std::size(REFUSALS), 32u);
}

TEST(RefusalsTest, EnumerateInstancesOfSettingsIsNoneOfThemAndLeavesTheHandlerUntouched) {
    resetEngine();
    TraceCapture capture;
    const std::unique_ptr<CIMProvider> provider(PegasusCreateProvider("iSCSISettingsProvider"));
    clearLog();

    EXPECT_NO_THROW(call(*provider, "enumerateInstances"));
    EXPECT_THAT(log(), testing::IsEmpty());
}

} // namespace
