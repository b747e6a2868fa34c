// What an operation does when the engine gives no record where it has always given one.

#include <functional>

#include <Pegasus/Provider/ProviderException.h>

#include "tests/support/ProviderTest.h"
#include "tests/support/Served.h"

using namespace Pegasus;
using namespace scripted;

namespace {

constexpr Uint32 HOST = 0x0D000001;
constexpr Uint32 TARGET = 0x0E000001;
constexpr Uint32 UNIT = 0x0F000001;
constexpr Uint32 VOLUME = 0x17000001;
constexpr Uint32 CONNECTION_SETTINGS = 0x22000001;
constexpr Uint32 SESSION_SETTINGS = 0x23000001;

const CIMName SECRET("CIM_SharedSecret");
const CIMName HOST_CLASS("CIM_StorageHardwareID");
const CIMName UNIT_CLASS("CIM_ProtocolControllerForUnit");
const CIMName CONTROLLER("CIM_SCSIProtocolController");
const CIMName VOLUME_CLASS("CIM_StorageVolume");
const CIMName PIPE_END("CIM_EndpointOfNetworkPipe");
const CIMName COMPOSITION("CIM_NetworkPipeComposition");
const CIMName SESSION("CIM_iSCSISession");

CIMObjectPath unitPath() {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Antecedent", CIMValue(keyed(CONTROLLER, "DeviceID", TARGET))));
    keys.append(CIMKeyBinding("Dependent", CIMValue(keyed(VOLUME_CLASS, "DeviceID", VOLUME))));
    return CIMObjectPath("", CIMNamespaceName("root/snia"), UNIT_CLASS, keys);
}

CIMInstance newSecret() {
    CIMInstance instance(SECRET);
    instance.addProperty(CIMProperty("Secret", String("new")));
    return instance;
}

// Calls a method that maps volumes, if any, at the controller.
void map(Served& served, const char* method, const char* volumeName) {
    Array<CIMObjectPath> controllers;
    controllers.append(keyed(CONTROLLER, "DeviceID", TARGET));
    Array<String> volumes;
    if (volumeName) {
        volumes.append(volumeName);
    }
    Array<CIMParamValue> parameters;
    parameters.append(CIMParamValue("ProtocolControllers", controllers));
    parameters.append(CIMParamValue("LUNames", volumes));
    served.invokeMethod("CIM_ControllerConfigurationService", method, parameters);
}

const CIMObjectPath CONTROLLER_PATH = keyed(CONTROLLER, "DeviceID", TARGET);
const CIMObjectPath VOLUME_PATH = keyed(VOLUME_CLASS, "DeviceID", VOLUME);

struct Use {
    const char* name;
    const char* provider;
    std::function<void(Served&)> call;
    Uint32 id; // of the record that isn't there; its class is the one asked for
};

const char* const SECRETS = "SharedSecretProvider";
const char* const HOSTS = "StorageHardwareIDProvider";
const char* const SERVICE = "ControllerConfigurationServiceProvider";
const char* const UNITS = "ProtocolControllerForUnitProvider";
const char* const SETTINGS = "iSCSISettingsProvider";
const char* const PIPES = "iSCSIPipesProvider";

const Use FAILING[] = {
    {"SecretOfAnInitiator", SECRETS,
     [](Served& served) { served.getInstance(keyed(SECRET, "RemoteID", HOST)); }, HOST},
    {"SecretOfATarget", SECRETS,
     [](Served& served) { served.getInstance(keyed(SECRET, "RemoteID", TARGET)); }, TARGET},
    {"NewSecretOfAnInitiator", SECRETS,
     [](Served& served) { served.modifyInstance(keyed(SECRET, "RemoteID", HOST), newSecret()); },
     HOST},
    {"NewSecretOfATarget", SECRETS,
     [](Served& served) { served.modifyInstance(keyed(SECRET, "RemoteID", TARGET), newSecret()); },
     TARGET},
    {"Host", HOSTS,
     [](Served& served) { served.getInstance(keyed(HOST_CLASS, "InstanceID", HOST)); }, HOST},
    {"Hosts", HOSTS, [](Served& served) { served.enumerate(HOST_CLASS); }, HOST},
    {"ExposePaths", SERVICE, [](Served& served) { map(served, "ExposePaths", "60A1"); }, UNIT},
    {"HidePaths", SERVICE, [](Served& served) { map(served, "HidePaths", "60A1"); }, UNIT},
    {"Unit", UNITS, [](Served& served) { served.getInstance(unitPath()); }, UNIT},
    {"Units", UNITS, [](Served& served) { served.enumerate(UNIT_CLASS); }, UNIT},
    {"UnitNames", UNITS, [](Served& served) { served.enumerateNames(UNIT_CLASS); }, UNIT},
    {"NewAccessOfAUnit", UNITS,
     [](Served& served) { served.modifyInstance(unitPath(), CIMInstance(UNIT_CLASS)); }, UNIT},
    {"VolumesOfAController", UNITS,
     [](Served& served) { served.associators(CONTROLLER_PATH, UNIT_CLASS, VOLUME_CLASS); }, UNIT},
    {"VolumeNamesOfAController", UNITS,
     [](Served& served) { served.associatorNames(CONTROLLER_PATH, UNIT_CLASS, VOLUME_CLASS); },
     UNIT},
    {"UnitsOfAVolume", UNITS,
     [](Served& served) { served.references(VOLUME_PATH, UNIT_CLASS, "Dependent"); }, UNIT},
    {"UnitNamesOfAVolume", UNITS,
     [](Served& served) { served.referenceNames(VOLUME_PATH, UNIT_CLASS, "Dependent"); }, UNIT},
    {"NewSessionSettings", SETTINGS,
     [](Served& served) {
         served.modifyInstance(keyed("CIM_iSCSISessionSettings", "InstanceID", SESSION_SETTINGS),
                               CIMInstance("CIM_iSCSISessionSettings"));
     },
     SESSION_SETTINGS},
    {"NewConnectionSettings", SETTINGS,
     [](Served& served) {
         served.modifyInstance(
             keyed("CIM_iSCSIConnectionSettings", "InstanceID", CONNECTION_SETTINGS),
             CIMInstance("CIM_iSCSIConnectionSettings"));
     },
     CONNECTION_SETTINGS},
};

const CIMObjectPath ENDPOINT_PATH =
    requestPath("CIM_iSCSIProtocolEndpoint", {{"Name", "iqn.t1,t,0x0001"}});

// These do without the record: a target is left out, a unit of no listed volume stays.
const Use UNHARMED[] = {
    {"HidePathsWithoutVolumes", SERVICE,
     [](Served& served) {
         map(served, "HidePaths", nullptr);
         EXPECT_THAT(served.results.returnValues, testing::ElementsAre(CIMValue(Uint32(0))));
     },
     UNIT},
    {"PipeEnds", PIPES, [](Served& served) { served.enumerate(PIPE_END); }, TARGET},
    {"PipeEndNames", PIPES, [](Served& served) { served.enumerateNames(PIPE_END); }, TARGET},
    {"Compositions", PIPES, [](Served& served) { served.enumerate(COMPOSITION); }, TARGET},
    {"SessionsOfAnEndpoint", PIPES,
     [](Served& served) { served.associators(ENDPOINT_PATH, PIPE_END, SESSION); }, TARGET},
    {"PipeEndsOfASession", PIPES,
     [](Served& served) {
         served.references(keyed(SESSION, "InstanceID", 0x11000001), PIPE_END, "");
     },
     TARGET},
};

class MissingRecordTest : public testing::TestWithParam<Use> {
protected:
    MissingRecordTest() {
        resetEngine();
        for (const Uint32 id :
             {HOST, TARGET, UNIT, VOLUME, CONNECTION_SETTINGS, SESSION_SETTINGS}) {
            addNullRecord(id);
        }
        associate(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR, {HOST});
        associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET});
        associate(TARGET, CLASSID_LOGICAL_UNIT, {UNIT});
        associate(TARGET, CLASSID_ISCSI_SESSION, {0x11000001});
        setIdByKey(CLASSID_VOLUME, ManagedObject::hexToBin("60A1"), VOLUME);
        setIdByName(CLASSID_TARGET, "iqn.t1", TARGET);
    }

    // The call of the engine that gives the null pointer.
    static std::string reading() {
        return "getObject(" + std::to_string(GetParam().id >> 24) + ", " + idText(GetParam().id) +
               ")";
    }

    TraceCapture capture;
};

class FailingUseTest : public MissingRecordTest {};

TEST_P(FailingUseTest, IsNotFoundByItsClassAndIdAndNotCompleted) {
    Served served(GetParam().provider);

    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>([&] { GetParam().call(served); }),
              keyText(GetParam().id) + ": the engine has no record of class " +
                  std::to_string(GetParam().id >> 24));
    EXPECT_EQ(log().back(), reading());
}

class UnharmedUseTest : public MissingRecordTest {};

TEST_P(UnharmedUseTest, GoesOnWithoutTheRecord) {
    Served served(GetParam().provider);

    EXPECT_NO_THROW(GetParam().call(served));
    EXPECT_EQ(log().back(), "complete");
    EXPECT_THAT(log(), testing::Contains(reading()));
    if (std::string(GetParam().provider) == PIPES) {
        EXPECT_THAT(log(), testing::Not(testing::Contains(testing::StartsWith("deliver "))));
    }
}

std::string useName(const testing::TestParamInfo<Use>& use) {
    return use.param.name;
}

INSTANTIATE_TEST_SUITE_P(All, FailingUseTest, testing::ValuesIn(FAILING), useName);
INSTANTIATE_TEST_SUITE_P(All, UnharmedUseTest, testing::ValuesIn(UNHARMED), useName);

} // namespace
