// Each operation tells the engine where it begins and ends, so that all that it reads can be of one
// moment. Refusals read nothing and tell nothing: see RefusalsTest.

#include "engine/OperationScope.h"

#include <algorithm>
#include <functional>
#include <map>

#include "engine/CurrentName.h"
#include "tests/support/ProviderTest.h"
#include "tests/support/Served.h"

using namespace Pegasus;
using namespace scripted;

namespace {

const std::string BEGIN = "DRAVBeginOperation()";
const std::string END = "DRAVEndOperation()";
const std::string NAME = "DRAVCurrentName()";

} // namespace

// What this program's engine knows beside the scripted one.
void DRAVBeginOperation() noexcept {
    note(Entry::Call, BEGIN);
}

void DRAVEndOperation() noexcept {
    note(Entry::Call, END);
}

const String* DRAVCurrentName(const String*& pointer) noexcept {
    note(Entry::Call, NAME);
    return pointer;
}

namespace {

constexpr Uint32 HOST = 0x0D000001;
constexpr Uint32 TARGET = 0x0E000001;
constexpr Uint32 UNIT = 0x0F000001;
constexpr Uint32 SESSION_ID = 0x11000001;
constexpr Uint32 VOLUME = 0x17000001;
constexpr Uint32 SESSION_SETTINGS = 0x23000001;

const CIMName HOST_CLASS("CIM_StorageHardwareID");
const CIMName PRIVILEGE("CIM_AuthorizedPrivilege");
const CIMName AUTHORIZED_TARGET("CIM_AuthorizedTarget");
const CIMName CONTROLLER("CIM_SCSIProtocolController");
const CIMName UNIT_CLASS("CIM_ProtocolControllerForUnit");
const CIMName VOLUME_CLASS("CIM_StorageVolume");
const CIMName SETTINGS_CLASS("CIM_iSCSISessionSettings");
const CIMName SESSION("CIM_iSCSISession");
const CIMName PIPE_END("CIM_EndpointOfNetworkPipe");
const CIMName HOST_SERVICE("CIM_StorageHardwareIDManagementService");
const CIMName MASKING_SERVICE("CIM_ControllerConfigurationService");

const CIMObjectPath HOST_PATH = keyed(HOST_CLASS, "InstanceID", HOST);
const CIMObjectPath SECRET_PATH = keyed("CIM_SharedSecret", "RemoteID", HOST);
const CIMObjectPath PRIVILEGE_PATH = keyed(PRIVILEGE, "InstanceID", HOST);
const CIMObjectPath CONTROLLER_PATH = keyed(CONTROLLER, "DeviceID", TARGET);
const CIMObjectPath SETTINGS_PATH = keyed(SETTINGS_CLASS, "InstanceID", SESSION_SETTINGS);
const CIMObjectPath SESSION_PATH = keyed(SESSION, "InstanceID", SESSION_ID);

CIMObjectPath unitPath() {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Antecedent", CIMValue(CONTROLLER_PATH)));
    keys.append(CIMKeyBinding("Dependent", CIMValue(keyed(VOLUME_CLASS, "DeviceID", VOLUME))));
    return CIMObjectPath("", CIMNamespaceName("root/snia"), UNIT_CLASS, keys);
}

CIMInstance newSecret() {
    CIMInstance instance("CIM_SharedSecret");
    instance.addProperty(CIMProperty("Secret", String("new")));
    return instance;
}

Array<CIMParamValue> parameter(const char* name, const CIMValue& value) {
    return Array<CIMParamValue>(1, CIMParamValue(name, value));
}

// One operation of a provider, in a request that makes it read something.
struct Operation {
    const char* provider;
    const char* name;
    std::function<void(Served&)> call;
};

const char* const HOSTS = "StorageHardwareIDProvider";
const char* const SECRETS = "SharedSecretProvider";
const char* const ACCESS = "AuthorizedAccessProvider";
const char* const HOST_SERVICES = "StorageHardwareIDManagementServiceProvider";
const char* const MASKING_SERVICES = "ControllerConfigurationServiceProvider";
const char* const CONTROLLERS = "SCSIProtocolControllerProvider";
const char* const UNITS = "ProtocolControllerForUnitProvider";
const char* const SETTINGS = "iSCSISettingsProvider";
const char* const PIPES = "iSCSIPipesProvider";

const Operation OPERATIONS[] = {
    {HOSTS, "getInstance", [](Served& served) { served.getInstance(HOST_PATH); }},
    {HOSTS, "enumerateInstances", [](Served& served) { served.enumerate(HOST_CLASS); }},
    {HOSTS, "enumerateInstanceNames", [](Served& served) { served.enumerateNames(HOST_CLASS); }},

    {SECRETS, "getInstance", [](Served& served) { served.getInstance(SECRET_PATH); }},
    {SECRETS, "modifyInstance",
     [](Served& served) { served.modifyInstance(SECRET_PATH, newSecret()); }},

    {ACCESS, "associators",
     [](Served& served) { served.associators(PRIVILEGE_PATH, AUTHORIZED_TARGET, CONTROLLER); }},
    {ACCESS, "associatorNames",
     [](Served& served) { served.associatorNames(PRIVILEGE_PATH, AUTHORIZED_TARGET, CONTROLLER); }},

    {HOST_SERVICES, "getInstance",
     [](Served& served) { served.getInstance(requestPath(HOST_SERVICE)); }},
    {HOST_SERVICES, "enumerateInstances", [](Served& served) { served.enumerate(HOST_SERVICE); }},
    {HOST_SERVICES, "enumerateInstanceNames",
     [](Served& served) { served.enumerateNames(HOST_SERVICE); }},
    {HOST_SERVICES, "invokeMethod",
     [](Served& served) {
         served.invokeMethod(HOST_SERVICE, "DeleteStorageHardwareID",
                             parameter("HardwareID", CIMValue(HOST_PATH)));
     }},

    {MASKING_SERVICES, "getInstance",
     [](Served& served) { served.getInstance(requestPath(MASKING_SERVICE)); }},
    {MASKING_SERVICES, "enumerateInstances",
     [](Served& served) { served.enumerate(MASKING_SERVICE); }},
    {MASKING_SERVICES, "enumerateInstanceNames",
     [](Served& served) { served.enumerateNames(MASKING_SERVICE); }},
    {MASKING_SERVICES, "invokeMethod",
     [](Served& served) {
         Array<CIMParamValue> parameters =
             parameter("ProtocolControllers", CIMValue(Array<CIMObjectPath>(1, CONTROLLER_PATH)));
         parameters.append(CIMParamValue("InitiatorPortIDs", CIMValue(Array<String>(1, "iqn.h1"))));
         served.invokeMethod(MASKING_SERVICE, "ExposePaths", parameters);
     }},

    {CONTROLLERS, "getInstance", [](Served& served) { served.getInstance(CONTROLLER_PATH); }},
    {CONTROLLERS, "enumerateInstances", [](Served& served) { served.enumerate(CONTROLLER); }},
    {CONTROLLERS, "enumerateInstanceNames",
     [](Served& served) { served.enumerateNames(CONTROLLER); }},

    {UNITS, "getInstance", [](Served& served) { served.getInstance(unitPath()); }},
    {UNITS, "enumerateInstances", [](Served& served) { served.enumerate(UNIT_CLASS); }},
    {UNITS, "enumerateInstanceNames", [](Served& served) { served.enumerateNames(UNIT_CLASS); }},
    {UNITS, "modifyInstance",
     [](Served& served) { served.modifyInstance(unitPath(), CIMInstance(UNIT_CLASS)); }},
    {UNITS, "associators",
     [](Served& served) { served.associators(CONTROLLER_PATH, UNIT_CLASS, VOLUME_CLASS); }},
    {UNITS, "associatorNames",
     [](Served& served) { served.associatorNames(CONTROLLER_PATH, UNIT_CLASS, VOLUME_CLASS); }},
    {UNITS, "references",
     [](Served& served) { served.references(CONTROLLER_PATH, UNIT_CLASS, "Antecedent"); }},
    {UNITS, "referenceNames",
     [](Served& served) { served.referenceNames(CONTROLLER_PATH, UNIT_CLASS, "Antecedent"); }},

    {SETTINGS, "getInstance", [](Served& served) { served.getInstance(SETTINGS_PATH); }},
    {SETTINGS, "modifyInstance",
     [](Served& served) { served.modifyInstance(SETTINGS_PATH, CIMInstance(SETTINGS_CLASS)); }},

    {PIPES, "getInstance", [](Served& served) { served.getInstance(SESSION_PATH); }},
    {PIPES, "enumerateInstances", [](Served& served) { served.enumerate(PIPE_END); }},
    {PIPES, "enumerateInstanceNames", [](Served& served) { served.enumerateNames(PIPE_END); }},
    {PIPES, "associators",
     [](Served& served) {
         served.associators(SESSION_PATH, PIPE_END, "CIM_iSCSIProtocolEndpoint");
     }},
    {PIPES, "associatorNames",
     [](Served& served) {
         served.associatorNames(SESSION_PATH, PIPE_END, "CIM_iSCSIProtocolEndpoint");
     }},
    {PIPES, "references", [](Served& served) { served.references(SESSION_PATH, PIPE_END, ""); }},
    {PIPES, "referenceNames",
     [](Served& served) { served.referenceNames(SESSION_PATH, PIPE_END, ""); }},
};

// An array with one object of each kind.
void makeObjects() {
    resetEngine();
    addRecord(HOST, DRAVInitiator("iqn.h1"));
    addRecord(TARGET, DRAVTarget("iqn.t1"));
    addRecord(UNIT, DRAVLogicalUnit(TARGET, 0, 0, VOLUME));
    addRecord(VOLUME, DRAVVolume());
    addRecord(SESSION_SETTINGS, DRAVSessionSettings());
    associate(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR, {HOST});
    associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET});
    associate(HOST, CLASSID_TARGET, {TARGET});
    associate(TARGET, CLASSID_LOGICAL_UNIT, {UNIT});
    associate(TARGET, CLASSID_ISCSI_SESSION, {SESSION_ID});
}

class OperationScopeTest : public testing::TestWithParam<Operation> {
protected:
    OperationScopeTest() { begin(); }

    void begin() {
        makeObjects();
        served = std::make_unique<Served>(GetParam().provider);
        clearLog();
    }

    // What the operation has done, without the scope's two calls: all of it stood between them.
    static std::vector<std::string> insideTheScope() {
        std::vector<std::string> entries = log();
        EXPECT_EQ(std::ranges::count(entries, BEGIN), 1);
        EXPECT_EQ(std::ranges::count(entries, END), 1);
        if (entries.size() < 2 || entries.front() != BEGIN || entries.back() != END) {
            ADD_FAILURE() << testing::PrintToString(entries);
            return {};
        }
        return {entries.begin() + 1, entries.end() - 1};
    }

    TraceCapture capture;
    std::unique_ptr<Served> served;
};

TEST_P(OperationScopeTest, AllThatItDoesStandsBetweenBeginAndEndAlsoWhenTheEngineFails) {
    GetParam().call(*served);

    EXPECT_THAT(insideTheScope(), testing::Contains("complete"));
    EXPECT_GT(calls().size(), 2u) << "reads nothing";

    std::map<std::string, int> before;
    for (const std::string& failing : calls()) {
        if (failing == BEGIN || failing == END || failing == NAME) {
            continue;
        }
        const std::string name = failing.substr(0, failing.find('('));
        begin();
        failNext(name, 7, "no", before[name]++);
        try {
            GetParam().call(*served);
        } catch (const CIMException&) { // of some; others answer with a value
        }
        EXPECT_THAT(insideTheScope(), testing::Contains(failing));
    }
}

INSTANTIATE_TEST_SUITE_P(All, OperationScopeTest, testing::ValuesIn(OPERATIONS),
                         [](const auto& row) {
                             return std::string(row.param.provider) + "_" + row.param.name;
                         });

// With the 32 refusals and the operation that does nothing they are all 68 operations: six of each
// provider, four more of each of three, and two methods.
TEST(OperationScopesTest, ThereAre35) {
    EXPECT_EQ(std::size(OPERATIONS), 35u);
}

} // namespace
