#include <gmock/gmock.h>

#include "array/adapter/ThisArray.h"
#include "tests/array/adapter/EveryInstance.h"
#include "tests/support/Text.h"

// What each builder writes, property by property.

using namespace Pegasus;
using scripted::keyText;
using scripted::properties;
using testing::ElementsAre;

namespace array {
namespace {

using Lines = std::vector<std::string>;

// The properties of the nth builder's instance of the rich sample or of the plain one.
Lines built(const char* className, const Sample::Ids& ids, int skip = 0) {
    for (const InstanceRow& row : everyInstance) {
        if (std::string(row.className) == className && skip-- == 0) {
            return properties(row.build(false, CIMPropertyList(), ids));
        }
    }
    return {"no such builder"};
}

Lines rich(const char* className) {
    return built(className, sample().rich);
}

Lines plain(const char* className) {
    return built(className, sample().plain);
}

std::string instanceID(Id id) {
    return "InstanceID: string " + keyText(id);
}

TEST(BuilderInstancesTest, Controller) {
    EXPECT_THAT(rich("CIM_SCSIProtocolController"),
                ElementsAre("CreationClassName: string CIM_SCSIProtocolController",
                            "DeviceID: string " + keyText(sample().rich.target),
                            "SystemCreationClassName: string CIM_ComputerSystem",
                            "SystemName: string array1",
                            "Name: string iqn.2026-01.com.example:target-rich",
                            "NameFormat: uint16 3",
                            "ElementName: string iqn.2026-01.com.example:target-rich",
                            "MaxUnitsControlled: uint32 16384", "OperationalStatus: uint16[] 2 ",
                            "EnabledState: uint16 2"));
}

TEST(BuilderInstancesTest, Volume) {
    EXPECT_THAT(rich("CIM_StorageVolume"),
                ElementsAre("CreationClassName: string CIM_StorageVolume",
                            "DeviceID: string " + keyText(sample().rich.volume),
                            "SystemCreationClassName: string CIM_ComputerSystem",
                            "SystemName: string array1",
                            "Name: string 60014051A2B3C4D5E6F7A8B9C0D1E2F3", "NameFormat: uint16 9",
                            "NameNamespace: uint16 2", "ElementName: string m\xC3\xA4il",
                            "BlockSize: uint64 512", "NumberOfBlocks: uint64 1953125000",
                            "ConsumableBlocks: uint64 1953125000", "Access: uint16 3",
                            "Primordial: boolean FALSE", "OperationalStatus: uint16[] 2 ",
                            "EnabledState: uint16 2"));
}

TEST(BuilderInstancesTest, AVolumeThatIsGoneHasNoContact) {
    EXPECT_THAT(
        built("CIM_StorageVolume", sample().rich, 1),
        ElementsAre(
            "CreationClassName: string CIM_StorageVolume", "DeviceID: string Ovrin:00000000",
            "SystemCreationClassName: string CIM_ComputerSystem", "SystemName: string array1",
            "Name: string 60014051A2B3C4D5", "NameFormat: uint16 9", "NameNamespace: uint16 2",
            "ElementName: string ", "BlockSize: uint64 512", "NumberOfBlocks: uint64 0",
            "ConsumableBlocks: uint64 0", "Access: uint16 3", "Primordial: boolean FALSE",
            "OperationalStatus: uint16[] 12 ", "EnabledState: uint16 2"));
}

TEST(BuilderInstancesTest, ASessionWithTheParametersInForce) {
    EXPECT_THAT(
        rich("CIM_iSCSISession"),
        ElementsAre(instanceID(sample().rich.session),
                    "ElementName: string iqn.2026-01.com.example:host-rich",
                    "Directionality: uint16 2", "SessionType: uint16 3", "TSIH: uint32 65535",
                    "EndPointName: string iqn.2026-01.com.example:host-rich",
                    "CurrentConnections: uint32 2", "MaxConnectionsPerSession: uint32 4",
                    "InitialR2T: boolean FALSE", "ImmediateData: boolean TRUE",
                    "MaxOutstandingR2T: uint32 5", "MaxUnsolicitedFirstDataBurstLength: uint32 600",
                    "MaxDataBurstLength: uint32 700", "DataSequenceInOrder: boolean FALSE",
                    "DataPDUInOrder: boolean TRUE", "DefaultTimeToWait: uint32 8",
                    "DefaultTimeToRetain: uint32 9", "ErrorRecoveryLevel: uint32 1",
                    "OperationalStatus: uint16[] 2 ", "EnabledState: uint16 2"));
}

TEST(BuilderInstancesTest, AConnectionAuthenticatedBothWays) {
    EXPECT_THAT(
        rich("CIM_iSCSIConnection"),
        ElementsAre(instanceID(sample().rich.connection), "ElementName: string [2001:db8::10]:3261",
                    "ConnectionID: uint32 7", "MaxReceiveDataSegmentLength: uint32 1024",
                    "HeaderDigestMethod: uint16 2", "DataDigestMethod: uint16 3",
                    "ReceivingMarkers: boolean TRUE", "MaxTransmitDataSegmentLength: uint32 1024",
                    "SendingMarkers: boolean TRUE", "AuthenticationMethodUsed: uint16 4",
                    "MutualAuthentication: boolean TRUE", "OperationalStatus: uint16[] 2 ",
                    "EnabledState: uint16 2"));
}

TEST(BuilderInstancesTest, AConnectionWithoutAuthentication) {
    EXPECT_THAT(
        plain("CIM_iSCSIConnection"),
        testing::IsSupersetOf(
            {"ElementName: string 192.0.2.10:3260", "MaxReceiveDataSegmentLength: uint32 8192",
             "HeaderDigestMethod: uint16 3", "ReceivingMarkers: boolean FALSE",
             "AuthenticationMethodUsed: uint16 2", "MutualAuthentication: boolean FALSE"}));
}

TEST(BuilderInstancesTest, AnISCSIEndpoint) {
    EXPECT_THAT(rich("CIM_iSCSIProtocolEndpoint"),
                ElementsAre("CreationClassName: string CIM_iSCSIProtocolEndpoint",
                            "Name: string iqn.2026-01.com.example:target-rich,t,0x0001",
                            "SystemCreationClassName: string CIM_ComputerSystem",
                            "SystemName: string array1",
                            "ElementName: string iqn.2026-01.com.example:target-rich",
                            "NameFormat: string iSCSI Name", "ProtocolIFType: uint16 1",
                            "OtherTypeDescription: string iSCSI", "ConnectionType: uint16 7",
                            "Role: uint16 3", "Identifier: string 0001",
                            "OperationalStatus: uint16[] 2 ", "EnabledState: uint16 2"));
}

TEST(BuilderInstancesTest, ATCPEndpointWithItsAddressAndPort) {
    EXPECT_THAT(rich("CIM_TCPProtocolEndpoint"),
                ElementsAre("CreationClassName: string CIM_TCPProtocolEndpoint",
                            "Name: string " + keyText(sample().rich.endpoint),
                            "SystemCreationClassName: string CIM_ComputerSystem",
                            "SystemName: string array1", "ElementName: string [2001:db8::10]:3261",
                            "NameFormat: string Address:Port", "ProtocolIFType: uint16 4111",
                            "PortNumber: uint32 3261", "OperationalStatus: uint16[] 2 ",
                            "EnabledState: uint16 2"));
    EXPECT_THAT(
        plain("CIM_TCPProtocolEndpoint"),
        testing::IsSupersetOf({"ElementName: string 192.0.2.10:3260", "PortNumber: uint32 3260"}));
}

TEST(BuilderInstancesTest, APipesEnd) {
    const Id session = sample().rich.session;
    const std::string endpoint =
        scripted::text(iSCSIProtocolEndpointPath("iqn.2026-01.com.example:any"));
    const std::string pipe = scripted::text(iSCSISessionPath("CIM_iSCSISession", session));

    EXPECT_THAT(rich("CIM_EndpointOfNetworkPipe"),
                ElementsAre("Antecedent: reference " + endpoint +
                                " of CIM_iSCSIProtocolEndpoint from CIM_EndpointOfNetworkPipe",
                            "Dependent: reference " + pipe +
                                " of CIM_iSCSISession from CIM_EndpointOfNetworkPipe",
                            "SourceOrSink: uint16 4"));
}

TEST(BuilderInstancesTest, AComposition) {
    const Sample::Ids& ids = sample().rich;
    const std::string session = scripted::text(iSCSISessionPath("CIM_iSCSISession", ids.session));
    const std::string connection =
        scripted::text(iSCSIConnectionPath("CIM_iSCSIConnection", ids.connection));

    EXPECT_THAT(rich("CIM_NetworkPipeComposition"),
                ElementsAre("GroupComponent: reference " + session +
                                " of CIM_iSCSISession from CIM_NetworkPipeComposition",
                            "PartComponent: reference " + connection +
                                " of CIM_iSCSIConnection from CIM_NetworkPipeComposition",
                            "AggregationSequence: uint16 0"));
}

TEST(BuilderInstancesTest, SessionSettingsAsProposed) {
    EXPECT_THAT(
        rich("CIM_iSCSISessionSettings"),
        ElementsAre(
            instanceID(sample().rich.sessionSettings),
            "ElementName: string iqn.2026-01.com.example:target-rich",
            "MaxConnectionsPerSession: uint32 4", "InitialR2TPreference: boolean FALSE",
            "ImmediateDataPreference: boolean TRUE", "MaxOutstandingR2T: uint32 5",
            "MaxUnsolicitedFirstDataBurstLength: uint32 600", "MaxDataBurstLength: uint32 700",
            "DataSequenceInOrderPreference: boolean FALSE",
            "DataPDUInOrderPreference: boolean TRUE", "DefaultTimeToWaitPreference: uint32 8",
            "DefaultTimeToRetainPreference: uint32 9", "ErrorRecoveryLevelPreference: uint32 1"));
}

TEST(BuilderInstancesTest, ConnectionSettingsByTheNumbersOfTheirValueMaps) {
    EXPECT_THAT(
        rich("CIM_iSCSIConnectionSettings"),
        ElementsAre(
            instanceID(sample().rich.connectionSettings),
            "ElementName: string iqn.2026-01.com.example:target-rich",
            "MaxReceiveDataSegmentLength: uint32 1024", "PrimaryHeaderDigestMethod: uint16 2",
            "PrimaryDataDigestMethod: uint16 3", "SecondaryHeaderDigestMethod: uint16 4",
            "SecondaryDataDigestMethod: uint16 1", "RequestingMarkersOnReceive: boolean TRUE",
            "PrimaryAuthenticationMethod: uint16 6", "SecondaryAuthenticationMethod: uint16 4"));
    EXPECT_THAT(plain("CIM_iSCSIConnectionSettings"),
                testing::IsSupersetOf({"PrimaryAuthenticationMethod: uint16 5",
                                       "SecondaryAuthenticationMethod: uint16 3"}));
}

TEST(BuilderInstancesTest, LoginStatisticsAddTheFailuresUp) {
    EXPECT_THAT(
        rich("CIM_iSCSILoginStatistics"),
        ElementsAre(instanceID(sample().rich.target),
                    "ElementName: string iqn.2026-01.com.example:target-rich",
                    "LoginFailures: uint64 70", "SuccessfulLogins: uint64 11",
                    "NegotiationLoginFailures: uint64 12", "AuthenticationLoginFailures: uint64 13",
                    "AuthorizationLoginFailures: uint64 14", "LoginRedirects: uint64 15",
                    "OtherLoginFailures: uint64 16", "NormalLogouts: uint64 17",
                    "OtherLogouts: uint64 18",
                    "LastLoginFailureTime: datetime 20260801000000.123456+000",
                    "LastLoginFailureType: uint16 3",
                    "LastLoginFailureRemoteNodeName: string iqn.2026-01.com.example:stranger"));
}

TEST(BuilderInstancesTest, LoginStatisticsWithoutAFailureHaveNoLastOne) {
    EXPECT_THAT(plain("CIM_iSCSILoginStatistics"),
                ElementsAre(instanceID(sample().plain.target),
                            "ElementName: string iqn.2026-01.com.example:target-plain",
                            "LoginFailures: uint64 0", "SuccessfulLogins: uint64 0",
                            "NegotiationLoginFailures: uint64 0",
                            "AuthenticationLoginFailures: uint64 0",
                            "AuthorizationLoginFailures: uint64 0", "LoginRedirects: uint64 0",
                            "OtherLoginFailures: uint64 0", "NormalLogouts: uint64 0",
                            "OtherLogouts: uint64 0"));
}

TEST(BuilderInstancesTest, LoginStatisticsCountWhatLoginsDid) {
    LoginRequest request;
    request.endpoints = {sample().plain.endpoint};
    theArray().change([&](Change& change) {
        request.target = change.create(Target{"iqn.2026-01.com.example:counted", ""});
        request.initiator = change.create(Initiator{"iqn.2026-01.com.example:counter", ""});
    });
    EXPECT_THROW(theArray().login(request), DRAVOperationFailedException);
    theArray().change([&](Change& change) { change.grant(request.target, request.initiator); });
    theArray().logout(theArray().login(request));

    EXPECT_THAT(properties(iSCSILoginStatisticsInstance(false, CIMPropertyList(), request.target)),
                testing::IsSupersetOf(
                    {"LoginFailures: uint64 1", "AuthorizationLoginFailures: uint64 1",
                     "SuccessfulLogins: uint64 1", "NormalLogouts: uint64 1",
                     "LastLoginFailureType: uint16 4",
                     "LastLoginFailureRemoteNodeName: string iqn.2026-01.com.example:counter"}));
}

TEST(BuilderInstancesTest, SessionFailuresAddTheFailuresUp) {
    EXPECT_THAT(
        rich("CIM_iSCSISessionFailures"),
        ElementsAre(instanceID(sample().rich.target),
                    "ElementName: string iqn.2026-01.com.example:target-rich",
                    "SessionFailures: uint64 66", "SessionDigestFailures: uint64 21",
                    "SessionConnectionTimeoutFailures: uint64 22", "SessionFormatErrors: uint64 23",
                    "LastSessionFailureType: uint16 4",
                    "LastSessionFailureRemoteNodeName: string iqn.2026-01.com.example:broken"));
    EXPECT_THAT(plain("CIM_iSCSISessionFailures"),
                ElementsAre(instanceID(sample().plain.target),
                            "ElementName: string iqn.2026-01.com.example:target-plain",
                            "SessionFailures: uint64 0", "SessionDigestFailures: uint64 0",
                            "SessionConnectionTimeoutFailures: uint64 0",
                            "SessionFormatErrors: uint64 0"));
}

TEST(BuilderInstancesTest, SessionStatistics) {
    EXPECT_THAT(
        rich("CIM_iSCSISessionStatistics"),
        ElementsAre(instanceID(sample().rich.session),
                    "ElementName: string iqn.2026-01.com.example:host-rich",
                    "CommandPDUsTransferred: uint64 31", "ResponsePDUsTransferred: uint64 32",
                    "BytesTransmitted: uint64 18446744073709551615", "BytesReceived: uint64 34",
                    "DigestErrors: uint64 35", "ConnectionTimeoutErrors: uint64 36"));
}

TEST(BuilderInstancesTest, InterfaceStatistics) {
    EXPECT_THAT(rich("Ovrin_MACStatistics"),
                ElementsAre(instanceID(sample().rich.endpoint),
                            "ElementName: string [2001:db8::10]:3261", "FramesReceived: uint64 41",
                            "FramesSent: uint64 42", "OctetsReceived: uint64 43",
                            "OctetsSent: uint64 44", "ReceiveErrors: uint64 45",
                            "SendErrors: uint64 46", "ReceiveDiscards: uint64 47",
                            "SendDiscards: uint64 48"));
}

TEST(BuilderInstancesTest, ABuilderOfAnyClassKeepsTheClassGiven) {
    const Sample::Ids& ids = sample().rich;
    const CIMPropertyList all;

    EXPECT_EQ(scripted::text(
                  iSCSISessionInstance("cim_ISCSIsession", false, all, ids.session).getClassName()),
              "cim_ISCSIsession");
    EXPECT_EQ(scripted::text(iSCSISessionSettingsInstance("cim_ISCSIsessionsettings", false, all,
                                                          ids.sessionSettings)
                                 .getPath()
                                 .getClassName()),
              "cim_ISCSIsessionsettings");
}

} // namespace
} // namespace array
