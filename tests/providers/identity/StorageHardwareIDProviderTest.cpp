#include "providers/identity/StorageHardwareIDProvider.h"

#include <thread>

#include "tests/support/ProviderTest.h"

using namespace Pegasus;
using namespace scripted;
using testing::ElementsAre;

namespace {

constexpr Uint32 HOST1 = 0x0D000001;
constexpr Uint32 HOST2 = 0x0D000007;

const std::string HOST1_PATH = objectText("CIM_StorageHardwareID", "InstanceID", HOST1);
const std::string HOST2_PATH = objectText("CIM_StorageHardwareID", "InstanceID", HOST2);

class StorageHardwareIDProviderTest : public ProviderTest<StorageHardwareIDProvider> {
protected:
    StorageHardwareIDProviderTest() {
        addRecord(HOST1, DRAVInitiator("iqn.2026-01.com.example:host1"));
        addRecord(HOST2, DRAVInitiator("iqn.2026-01.com.example:host2"));
    }

    // Not in ascending order: the order is the engine's.
    void listBothHosts() { associate(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR, {HOST2, HOST1}); }

    void getInstance(const CIMObjectPath& path) {
        provider.getInstance(context, path, false, false, CIMPropertyList(), instances);
    }

    void enumerateInstances(const char* className) {
        provider.enumerateInstances(context, requestPath(className), false, false,
                                    CIMPropertyList(), instances);
    }

    void enumerateInstanceNames(const char* className) {
        provider.enumerateInstanceNames(context, requestPath(className), paths);
    }

    InstanceHandler instances;
    ObjectPathHandler paths;
};

TEST_F(StorageHardwareIDProviderTest, GetInstanceReadsTheHostAndDeliversIt) {
    getInstance(requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(HOST1)}}));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)",
                                   "deliver " + HOST1_PATH, "complete"));
}

TEST_F(StorageHardwareIDProviderTest, AnInstanceHasFourPropertiesAndOneKeyQualifier) {
    getInstance(requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(HOST1)}}));

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_EQ(text(instances.delivered[0].getClassName()), "CIM_StorageHardwareID");
    EXPECT_THAT(properties(instances.delivered[0]),
                ElementsAre("StorageID: string iqn.2026-01.com.example:host1", "IDType: uint16 5",
                            "CurrentlyAuthenticated: boolean FALSE",
                            "InstanceID: string Ovrin:0D000001 [Key=TRUE]"));
}

TEST_F(StorageHardwareIDProviderTest, FlagsAndPropertyListAreIgnored) {
    Array<CIMName> names;
    names.append(CIMName("IDType"));
    provider.getInstance(context,
                         requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(HOST1)}}),
                         true, true, CIMPropertyList(names), instances);

    ASSERT_EQ(instances.delivered.size(), 1u);
    EXPECT_THAT(properties(instances.delivered[0]),
                ElementsAre("StorageID: string iqn.2026-01.com.example:host1", "IDType: uint16 5",
                            "CurrentlyAuthenticated: boolean FALSE",
                            "InstanceID: string Ovrin:0D000001 [Key=TRUE]"));
}

TEST_F(StorageHardwareIDProviderTest, GetInstanceTakesTheFirstKeyWhateverItsName) {
    getInstance(requestPath("CIM_StorageHardwareID", {{"Name", keyText(HOST2)}}));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000007)",
                                   "deliver " + HOST2_PATH, "complete"));
}

TEST_F(StorageHardwareIDProviderTest, GetInstanceDoesNotLookAtTheClass) {
    getInstance(requestPath("CIM_StorageVolume", {{"InstanceID", keyText(HOST1)}}));

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)",
                                   "deliver " + HOST1_PATH, "complete"));
}

TEST_F(StorageHardwareIDProviderTest, GetInstanceWithoutKeysIsOutOfBoundsAndNotCompleted) {
    EXPECT_EQ(thrownBy<IndexOutOfBoundsException>(
                  [this] { getInstance(requestPath("CIM_StorageHardwareID")); }),
              "index out of bounds");

    EXPECT_THAT(log(), ElementsAre("processing"));
}

TEST_F(StorageHardwareIDProviderTest, GetInstanceWithATextThatIsNoKeyTextIsTheEnginesError) {
    EXPECT_EQ(thrownBy<DRAVOperationFailedException>([this] {
                  getInstance(requestPath("CIM_StorageHardwareID", {{"InstanceID", "host1"}}));
              }),
              "no record Ovrin:FFFFFFFF");

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0xFFFFFFFF)"));
}

TEST_F(StorageHardwareIDProviderTest, AnUnknownHostIsTheEnginesErrorAndNotCompleted) {
    failNext("getObject", 6, "no such initiator");

    EXPECT_EQ(
        thrownBy<DRAVOperationFailedException>([this] {
            getInstance(requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(HOST1)}}));
        }),
        "no such initiator");

    EXPECT_THAT(log(), ElementsAre("processing", "getObject(13, 0x0D000001)"));
}

TEST_F(StorageHardwareIDProviderTest, EnumerateInstancesDeliversEachHostInTheEnginesOrder) {
    listBothHosts();
    enumerateInstances("CIM_StorageHardwareID");

    EXPECT_THAT(log(),
                ElementsAre("trace StorageHardwareIDProvider::enumerateInstances", "processing",
                            "enumerateAssociatedObjects(0x02000000, 13)",
                            "getObject(13, 0x0D000007)", "deliver " + HOST2_PATH,
                            "getObject(13, 0x0D000001)", "deliver " + HOST1_PATH, "complete"));
}

TEST_F(StorageHardwareIDProviderTest, EveryHostHasTheSameTypeAndIsNeverAuthenticated) {
    listBothHosts();
    enumerateInstances("CIM_StorageHardwareID");

    ASSERT_EQ(instances.delivered.size(), 2u);
    for (const CIMInstance& instance : instances.delivered) {
        EXPECT_THAT(properties(instance), testing::Contains("IDType: uint16 5"));
        EXPECT_THAT(properties(instance),
                    testing::Contains("CurrentlyAuthenticated: boolean FALSE"));
    }
}

TEST_F(StorageHardwareIDProviderTest, EnumerateInstanceNamesReadsNoRecordAndWritesNoLine) {
    listBothHosts();
    enumerateInstanceNames("CIM_StorageHardwareID");

    EXPECT_THAT(log(), ElementsAre("processing", "enumerateAssociatedObjects(0x02000000, 13)",
                                   "deliver " + HOST2_PATH, "deliver " + HOST1_PATH, "complete"));
}

TEST_F(StorageHardwareIDProviderTest, NamesAreThePathsOfTheInstancesInTheSameOrder) {
    listBothHosts();
    enumerateInstances("CIM_StorageHardwareID");
    enumerateInstanceNames("CIM_StorageHardwareID");

    ASSERT_EQ(paths.delivered.size(), instances.delivered.size());
    for (size_t i = 0; i < paths.delivered.size(); ++i) {
        EXPECT_TRUE(paths.delivered[i].identical(instances.delivered[i].getPath()));
    }
}

TEST_F(StorageHardwareIDProviderTest, ClassesAreComparedWithoutRegardToCase) {
    listBothHosts();
    enumerateInstances("cim_storagehardwareid");
    enumerateInstanceNames("CIM_STORAGEHARDWAREID");

    EXPECT_EQ(instances.delivered.size(), 2u);
    EXPECT_EQ(paths.delivered.size(), 2u);
}

TEST_F(StorageHardwareIDProviderTest, WithoutHostsBothEnumerationsCompleteEmpty) {
    enumerateInstances("CIM_StorageHardwareID");
    enumerateInstanceNames("CIM_StorageHardwareID");

    EXPECT_THAT(log(),
                ElementsAre("trace StorageHardwareIDProvider::enumerateInstances", "processing",
                            "enumerateAssociatedObjects(0x02000000, 13)", "complete", "processing",
                            "enumerateAssociatedObjects(0x02000000, 13)", "complete"));
}

TEST_F(StorageHardwareIDProviderTest, AnotherClassIsNotAskedForButTheLineIsWritten) {
    listBothHosts();
    enumerateInstances("CIM_StorageVolume");
    enumerateInstanceNames("CIM_StorageVolume");

    EXPECT_THAT(log(), ElementsAre("trace StorageHardwareIDProvider::enumerateInstances",
                                   "processing", "complete", "processing", "complete"));
}

TEST_F(StorageHardwareIDProviderTest, AFailureAmongManyKeepsWhatWasDelivered) {
    listBothHosts();
    failNext("getObject", 6, "gone", 1);

    EXPECT_EQ(thrownBy<DRAVOperationFailedException>(
                  [this] { enumerateInstances("CIM_StorageHardwareID"); }),
              "gone");

    EXPECT_THAT(log(), ElementsAre("trace StorageHardwareIDProvider::enumerateInstances",
                                   "processing", "enumerateAssociatedObjects(0x02000000, 13)",
                                   "getObject(13, 0x0D000007)", "deliver " + HOST2_PATH,
                                   "getObject(13, 0x0D000001)"));
}

TEST_F(StorageHardwareIDProviderTest, EachOfManyThreadsGetsItsOwnHost) {
    const auto getManyTimes = [this](Uint32 host, const std::string& name) {
        for (int i = 0; i < 500; ++i) {
            InstanceHandler own;
            provider.getInstance(
                context, requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(host)}}),
                false, false, CIMPropertyList(), own);
            ASSERT_EQ(own.delivered.size(), 1u);
            ASSERT_THAT(properties(own.delivered[0]),
                        testing::Contains("StorageID: string " + name));
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(getManyTimes, HOST1, "iqn.2026-01.com.example:host1");
        threads.emplace_back(getManyTimes, HOST2, "iqn.2026-01.com.example:host2");
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(StorageHardwareIDProviderTest, WorksAfterTerminate) {
    provider.terminate();
    getInstance(requestPath("CIM_StorageHardwareID", {{"InstanceID", keyText(HOST1)}}));

    EXPECT_EQ(instances.delivered.size(), 1u);
}

} // namespace
