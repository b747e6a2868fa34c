#include <functional>

#include <gmock/gmock.h>

#include "array/adapter/ThisArray.h"
#include "engine/DRAVKeys.h"
#include "tests/array/adapter/EveryInstance.h"
#include "tests/support/Text.h"

using namespace Pegasus;
using scripted::keyText;
using scripted::text;

namespace array {
namespace {

const std::string root = "//array1.example.com/root/snia:";

// The path of a part of the array as a system.
std::string inSystem(const std::string& className, const std::string& key,
                     const std::string& value) {
    return root + className + ".CreationClassName=\"" + className + "\"," + key + "=\"" + value +
           "\",SystemCreationClassName=\"CIM_ComputerSystem\",SystemName=\"array1\"";
}

std::string withInstanceID(const std::string& className, Id id) {
    return root + className + ".InstanceID=\"" + keyText(id) + "\"";
}

// A path as the value of a reference key.
std::string referenceText(const std::string& path) {
    std::string escaped;
    for (const char c : path) {
        escaped += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return '"' + escaped + '"';
}

String keyOf(const CIMObjectPath& path, const char* name) {
    const Pegasus::Array<CIMKeyBinding> keys = path.getKeyBindings();
    Uint32 i = 0;
    while (keys[i].getName() != CIMName(name)) { // throws past the last
        ++i;
    }
    return keys[i].getValue();
}

Uint32 idOf(const CIMObjectPath& path, const char* name) {
    return DRAVObjectID(keyOf(path, name)).id;
}

const Sample::Ids& ids() {
    return sample().rich;
}

TEST(BuilderPathsTest, AControllersDeviceIDIsItsTargetsKeyText) {
    const iSCSINodePath path(ids().target);

    EXPECT_EQ(text(path),
              inSystem("CIM_SCSIProtocolController", "DeviceID", keyText(ids().target)));
    EXPECT_EQ(idOf(path, "DeviceID"), ids().target);
}

TEST(BuilderPathsTest, AVolumesDeviceIDIsItsKeyText) {
    const StorageVolumePath path(ids().volume);

    EXPECT_EQ(text(path), inSystem("CIM_StorageVolume", "DeviceID", keyText(ids().volume)));
    EXPECT_EQ(idOf(path, "DeviceID"), ids().volume);
}

TEST(BuilderPathsTest, AVolumeThatIsGoneHasAPath) {
    sample();

    EXPECT_EQ(text(StorageVolumePath(0)),
              inSystem("CIM_StorageVolume", "DeviceID", "Ovrin:00000000"));
}

TEST(BuilderPathsTest, SessionsAndConnectionsHaveTheClassGivenAndTheirKeyText) {
    EXPECT_EQ(text(iSCSISessionPath("cim_ISCSIsession", ids().session)),
              withInstanceID("cim_ISCSIsession", ids().session));
    EXPECT_EQ(text(iSCSIConnectionPath("CIM_NetworkPipe", ids().connection)),
              withInstanceID("CIM_NetworkPipe", ids().connection));
    EXPECT_EQ(idOf(iSCSISessionPath("CIM_iSCSISession", ids().session), "InstanceID"),
              ids().session);
    EXPECT_EQ(idOf(iSCSIConnectionPath("CIM_iSCSIConnection", ids().connection), "InstanceID"),
              ids().connection);
}

TEST(BuilderPathsTest, ATCPEndpointsNameIsItsKeyText) {
    const TCPProtocolEndpointPath path(ids().endpoint);

    EXPECT_EQ(text(path), inSystem("CIM_TCPProtocolEndpoint", "Name", keyText(ids().endpoint)));
    EXPECT_EQ(idOf(path, "Name"), ids().endpoint);
}

TEST(BuilderPathsTest, AnISCSIEndpointsNameIsTheTargetsAndNineCharacters) {
    sample();
    const iSCSIProtocolEndpointPath path("iqn.2026-01.com.example:any");

    EXPECT_EQ(text(path), inSystem("CIM_iSCSIProtocolEndpoint", "Name",
                                   "iqn.2026-01.com.example:any,t,0x0001"));
    const String name = keyOf(path, "Name");
    EXPECT_EQ(text(name.subString(0, name.size() - 9)), "iqn.2026-01.com.example:any");
}

TEST(BuilderPathsTest, APipesEndHasItsEndpointAndItsPipeAsKeys) {
    const EndpointOfNetworkPipePath path("iqn.any", "CIM_iSCSISession", ids().session);

    EXPECT_EQ(text(path),
              root + "CIM_EndpointOfNetworkPipe.Antecedent=" +
                  referenceText(inSystem("CIM_iSCSIProtocolEndpoint", "Name", "iqn.any,t,0x0001")) +
                  ",Dependent=" + referenceText(withInstanceID("CIM_iSCSISession", ids().session)));
}

TEST(BuilderPathsTest, ACompositionHasItsSessionAndItsConnectionAsKeys) {
    const NetworkPipeCompositionPath path("CIM_NetworkPipeComposition", ids().session,
                                          ids().connection);

    EXPECT_EQ(text(path),
              root + "CIM_NetworkPipeComposition.GroupComponent=" +
                  referenceText(withInstanceID("CIM_iSCSISession", ids().session)) +
                  ",PartComponent=" +
                  referenceText(withInstanceID("CIM_iSCSIConnection", ids().connection)));
}

TEST(BuilderPathsTest, AnInstancesPathIsThatOfItsObject) {
    const std::string expected[] = {
        text(iSCSINodePath(ids().target)),
        text(StorageVolumePath(ids().volume)),
        text(StorageVolumePath(0)),
        text(iSCSISessionPath("CIM_iSCSISession", ids().session)),
        text(iSCSIConnectionPath("CIM_iSCSIConnection", ids().connection)),
        text(iSCSIProtocolEndpointPath("iqn.2026-01.com.example:target-rich")),
        text(TCPProtocolEndpointPath(ids().endpoint)),
        text(EndpointOfNetworkPipePath("iqn.2026-01.com.example:any", "CIM_iSCSISession",
                                       ids().session)),
        text(NetworkPipeCompositionPath("CIM_NetworkPipeComposition", ids().session,
                                        ids().connection)),
        withInstanceID("CIM_iSCSISessionSettings", ids().sessionSettings),
        withInstanceID("CIM_iSCSIConnectionSettings", ids().connectionSettings),
        withInstanceID("CIM_iSCSILoginStatistics", ids().target),
        withInstanceID("CIM_iSCSISessionFailures", ids().target),
        withInstanceID("CIM_iSCSISessionStatistics", ids().session),
        withInstanceID("Ovrin_MACStatistics", ids().endpoint)};

    std::vector<std::string> paths;
    for (const InstanceRow& row : everyInstance) {
        paths.push_back(text(row.build(false, CIMPropertyList(), ids()).getPath()));
    }
    EXPECT_THAT(paths, testing::ElementsAreArray(expected));
}

// What the message of the CIM not-found exception says; empty if there was none.
std::string notFound(const std::function<void()>& build) {
    try {
        build();
    } catch (const CIMObjectNotFoundException& missing) {
        return text(missing.getMessage());
    }
    return "";
}

TEST(BuilderPathsTest, APathOfAnIdThatNamesNothingIsNotFound) {
    const Id session = ids().session; // an object, but of another class

    EXPECT_EQ(notFound([] { iSCSINodePath(0x0E00FFFF); }), "Ovrin:0E00FFFF");
    EXPECT_EQ(notFound([=] { iSCSINodePath{session}; }), keyText(session));
    EXPECT_EQ(notFound([] { iSCSINodePath(0); }), "Ovrin:00000000");
    EXPECT_EQ(notFound([] { StorageVolumePath(0x1700FFFF); }), "Ovrin:1700FFFF");
    EXPECT_EQ(notFound([=] { StorageVolumePath{session}; }), keyText(session));
    EXPECT_EQ(notFound([] { TCPProtocolEndpointPath(0x0900FFFF); }), "Ovrin:0900FFFF");
    EXPECT_EQ(notFound([] { iSCSISessionPath("CIM_iSCSISession", 0x1100FFFF); }), "Ovrin:1100FFFF");
    EXPECT_EQ(notFound([] { iSCSIConnectionPath("CIM_iSCSIConnection", 0x1000FFFF); }),
              "Ovrin:1000FFFF");
    EXPECT_EQ(
        notFound([] { EndpointOfNetworkPipePath("iqn.any", "CIM_iSCSISession", 0x1100FFFF); }),
        "Ovrin:1100FFFF");
    EXPECT_EQ(notFound([] {
                  NetworkPipeCompositionPath("CIM_NetworkPipeComposition", ids().session,
                                             0x1000FFFF);
              }),
              "Ovrin:1000FFFF");
    EXPECT_EQ(notFound([] {
                  NetworkPipeCompositionPath("CIM_NetworkPipeComposition", 0x1100FFFF,
                                             ids().connection);
              }),
              "Ovrin:1100FFFF");
}

TEST(BuilderPathsTest, AnInstanceOfAnIdThatNamesNothingIsNotFound) {
    sample();
    const Sample::Ids missing = {0x0900FFFF, 0x1700FFFF, 0x0D00FFFF, 0x0E00FFFF,
                                 0x2300FFFF, 0x2200FFFF, 0x1100FFFF, 0x1000FFFF};
    std::vector<std::string> texts;
    for (const InstanceRow& row : everyInstance) {
        texts.push_back(notFound([&] { row.build(false, CIMPropertyList(), missing); }));
    }

    EXPECT_THAT(texts, testing::ElementsAre("Ovrin:0E00FFFF", "Ovrin:1700FFFF",
                                            "", // a volume that is gone is given by its record
                                            "Ovrin:1100FFFF", "Ovrin:1000FFFF", "Ovrin:0E00FFFF",
                                            "Ovrin:0900FFFF", "Ovrin:1100FFFF", "Ovrin:1100FFFF",
                                            "Ovrin:2300FFFF", "Ovrin:2200FFFF", "Ovrin:0E00FFFF",
                                            "Ovrin:0E00FFFF", "Ovrin:1100FFFF", "Ovrin:0900FFFF"));
}

// The array's names may be changed by another process, whose commit each answer must show: also one
// that asks the array for nothing else.
TEST(BuilderPathsTest, PathsCarryTheNamesThatTheArrayHasNow) {
    sample();
    const ArrayNames before = theArray().snapshot()->names();
    theArray().change([](Change& change) { change.setNames({"renamed.example.com", "renamed"}); });
    const std::string renamed = text(StorageVolumePath(0));
    theArray().change([&](Change& change) { change.setNames(before); });

    EXPECT_THAT(renamed, testing::StartsWith("//renamed.example.com/root/snia:"));
    EXPECT_THAT(renamed, testing::EndsWith(",SystemName=\"renamed\""));
    EXPECT_THAT(text(StorageVolumePath(0)), testing::StartsWith(root));
}

} // namespace
} // namespace array
