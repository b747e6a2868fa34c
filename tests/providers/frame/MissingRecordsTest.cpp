// What an operation does when the engine gives no record where it has always given one.

#include <functional>
#include <memory>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/ProviderException.h>

#include "providers/frame/PegasusCreateProvider.h"
#include "tests/support/ProviderTest.h"

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

// A provider's operations, by their interfaces.
struct Server {
    explicit Server(const char* name) : _provider(PegasusCreateProvider(name)) {
        CIMOMHandle handle;
        _provider->initialize(handle);
    }

    void getInstance(const CIMObjectPath& path) {
        as<CIMInstanceProvider>().getInstance(_context, path, false, false, _all, instances);
    }

    void enumerate(const CIMName& className) {
        as<CIMInstanceProvider>().enumerateInstances(_context, requestPath(className), false, false,
                                                     _all, instances);
    }

    void enumerateNames(const CIMName& className) {
        as<CIMInstanceProvider>().enumerateInstanceNames(_context, requestPath(className), paths);
    }

    void modifyInstance(const CIMObjectPath& path, const CIMInstance& instance) {
        PlainHandler response;
        as<CIMInstanceProvider>().modifyInstance(_context, path, instance, false, _all, response);
    }

    void associators(const CIMObjectPath& path, const CIMName& association, const CIMName& result) {
        as<CIMAssociationProvider>().associators(_context, path, association, result, "", "", false,
                                                 false, _all, objects);
    }

    void associatorNames(const CIMObjectPath& path, const CIMName& association,
                         const CIMName& result) {
        as<CIMAssociationProvider>().associatorNames(_context, path, association, result, "", "",
                                                     paths);
    }

    void references(const CIMObjectPath& path, const CIMName& association, const char* role) {
        as<CIMAssociationProvider>().references(_context, path, association, role, false, false,
                                                _all, objects);
    }

    void referenceNames(const CIMObjectPath& path, const CIMName& association, const char* role) {
        as<CIMAssociationProvider>().referenceNames(_context, path, association, role, paths);
    }

    void invoke(const char* method, const char* volumeName) {
        Array<CIMObjectPath> controllers;
        controllers.append(requestPath(CONTROLLER, {{"DeviceID", keyText(TARGET)}}));
        Array<String> volumes;
        if (volumeName) {
            volumes.append(volumeName);
        }
        Array<CIMParamValue> parameters;
        parameters.append(CIMParamValue("ProtocolControllers", controllers));
        parameters.append(CIMParamValue("LUNames", volumes));
        as<CIMMethodProvider>().invokeMethod(_context,
                                             requestPath("CIM_ControllerConfigurationService"),
                                             method, parameters, results);
    }

    InstanceHandler instances;
    ObjectPathHandler paths;
    ObjectHandler objects;
    MethodResultHandler results;

private:
    template<class Interface>
    Interface& as() {
        return dynamic_cast<Interface&>(*_provider);
    }

    const std::unique_ptr<CIMProvider> _provider;
    const OperationContext _context;
    const CIMPropertyList _all;
};

CIMObjectPath keyed(const CIMName& className, const char* key, Uint32 id) {
    return requestPath(className, {{key, keyText(id)}});
}

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

const CIMObjectPath CONTROLLER_PATH = keyed(CONTROLLER, "DeviceID", TARGET);
const CIMObjectPath VOLUME_PATH = keyed(VOLUME_CLASS, "DeviceID", VOLUME);

struct Use {
    const char* name;
    const char* provider;
    std::function<void(Server&)> call;
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
     [](Server& server) { server.getInstance(keyed(SECRET, "RemoteID", HOST)); }, HOST},
    {"SecretOfATarget", SECRETS,
     [](Server& server) { server.getInstance(keyed(SECRET, "RemoteID", TARGET)); }, TARGET},
    {"NewSecretOfAnInitiator", SECRETS,
     [](Server& server) { server.modifyInstance(keyed(SECRET, "RemoteID", HOST), newSecret()); },
     HOST},
    {"NewSecretOfATarget", SECRETS,
     [](Server& server) { server.modifyInstance(keyed(SECRET, "RemoteID", TARGET), newSecret()); },
     TARGET},
    {"Host", HOSTS,
     [](Server& server) { server.getInstance(keyed(HOST_CLASS, "InstanceID", HOST)); }, HOST},
    {"Hosts", HOSTS, [](Server& server) { server.enumerate(HOST_CLASS); }, HOST},
    {"ExposePaths", SERVICE, [](Server& server) { server.invoke("ExposePaths", "60A1"); }, UNIT},
    {"HidePaths", SERVICE, [](Server& server) { server.invoke("HidePaths", "60A1"); }, UNIT},
    {"Unit", UNITS, [](Server& server) { server.getInstance(unitPath()); }, UNIT},
    {"Units", UNITS, [](Server& server) { server.enumerate(UNIT_CLASS); }, UNIT},
    {"UnitNames", UNITS, [](Server& server) { server.enumerateNames(UNIT_CLASS); }, UNIT},
    {"NewAccessOfAUnit", UNITS,
     [](Server& server) { server.modifyInstance(unitPath(), CIMInstance(UNIT_CLASS)); }, UNIT},
    {"VolumesOfAController", UNITS,
     [](Server& server) { server.associators(CONTROLLER_PATH, UNIT_CLASS, VOLUME_CLASS); }, UNIT},
    {"VolumeNamesOfAController", UNITS,
     [](Server& server) { server.associatorNames(CONTROLLER_PATH, UNIT_CLASS, VOLUME_CLASS); },
     UNIT},
    {"UnitsOfAVolume", UNITS,
     [](Server& server) { server.references(VOLUME_PATH, UNIT_CLASS, "Dependent"); }, UNIT},
    {"UnitNamesOfAVolume", UNITS,
     [](Server& server) { server.referenceNames(VOLUME_PATH, UNIT_CLASS, "Dependent"); }, UNIT},
    {"NewSessionSettings", SETTINGS,
     [](Server& server) {
         server.modifyInstance(keyed("CIM_iSCSISessionSettings", "InstanceID", SESSION_SETTINGS),
                               CIMInstance("CIM_iSCSISessionSettings"));
     },
     SESSION_SETTINGS},
    {"NewConnectionSettings", SETTINGS,
     [](Server& server) {
         server.modifyInstance(
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
     [](Server& server) {
         server.invoke("HidePaths", nullptr);
         EXPECT_THAT(server.results.returnValues, testing::ElementsAre(CIMValue(Uint32(0))));
     },
     UNIT},
    {"PipeEnds", PIPES, [](Server& server) { server.enumerate(PIPE_END); }, TARGET},
    {"PipeEndNames", PIPES, [](Server& server) { server.enumerateNames(PIPE_END); }, TARGET},
    {"Compositions", PIPES, [](Server& server) { server.enumerate(COMPOSITION); }, TARGET},
    {"SessionsOfAnEndpoint", PIPES,
     [](Server& server) { server.associators(ENDPOINT_PATH, PIPE_END, SESSION); }, TARGET},
    {"PipeEndsOfASession", PIPES,
     [](Server& server) {
         server.references(keyed(SESSION, "InstanceID", 0x11000001), PIPE_END, "");
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
    Server server(GetParam().provider);

    EXPECT_EQ(thrownBy<CIMObjectNotFoundException>([&] { GetParam().call(server); }),
              keyText(GetParam().id) + ": the engine has no record of class " +
                  std::to_string(GetParam().id >> 24));
    EXPECT_EQ(log().back(), reading());
}

class UnharmedUseTest : public MissingRecordTest {};

TEST_P(UnharmedUseTest, GoesOnWithoutTheRecord) {
    Server server(GetParam().provider);

    EXPECT_NO_THROW(GetParam().call(server));
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
