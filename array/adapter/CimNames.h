#pragma once

#include <Pegasus/Common/CIMName.h>

// The classes and properties that the builders write, made once: a CIMName checks and copies its
// text when it is made.

namespace array::name {

using Pegasus::CIMName;

// NOLINTBEGIN(readability-identifier-naming): each is called what CIM calls it.
inline const CIMName ComputerSystem("CIM_ComputerSystem");
inline const CIMName EndpointOfNetworkPipe("CIM_EndpointOfNetworkPipe");
inline const CIMName SCSIProtocolController("CIM_SCSIProtocolController");
inline const CIMName StorageVolume("CIM_StorageVolume");
inline const CIMName TCPProtocolEndpoint("CIM_TCPProtocolEndpoint");
inline const CIMName iSCSIConnection("CIM_iSCSIConnection");
inline const CIMName iSCSILoginStatistics("CIM_iSCSILoginStatistics");
inline const CIMName iSCSIProtocolEndpoint("CIM_iSCSIProtocolEndpoint");
inline const CIMName iSCSISession("CIM_iSCSISession");
inline const CIMName iSCSISessionFailures("CIM_iSCSISessionFailures");
inline const CIMName iSCSISessionStatistics("CIM_iSCSISessionStatistics");
inline const CIMName MACStatistics("Ovrin_MACStatistics");

inline const CIMName Access("Access");
inline const CIMName AggregationSequence("AggregationSequence");
inline const CIMName Antecedent("Antecedent");
inline const CIMName AuthenticationLoginFailures("AuthenticationLoginFailures");
inline const CIMName AuthenticationMethodUsed("AuthenticationMethodUsed");
inline const CIMName AuthorizationLoginFailures("AuthorizationLoginFailures");
inline const CIMName BlockSize("BlockSize");
inline const CIMName BytesReceived("BytesReceived");
inline const CIMName BytesTransmitted("BytesTransmitted");
inline const CIMName CommandPDUsTransferred("CommandPDUsTransferred");
inline const CIMName ConnectionID("ConnectionID");
inline const CIMName ConnectionTimeoutErrors("ConnectionTimeoutErrors");
inline const CIMName ConnectionType("ConnectionType");
inline const CIMName ConsumableBlocks("ConsumableBlocks");
inline const CIMName CreationClassName("CreationClassName");
inline const CIMName CurrentConnections("CurrentConnections");
inline const CIMName Dependent("Dependent");
inline const CIMName DeviceID("DeviceID");
inline const CIMName DigestErrors("DigestErrors");
inline const CIMName Directionality("Directionality");
inline const CIMName ElementName("ElementName");
inline const CIMName EnabledState("EnabledState");
inline const CIMName EndPointName("EndPointName");
inline const CIMName FramesReceived("FramesReceived");
inline const CIMName FramesSent("FramesSent");
inline const CIMName GroupComponent("GroupComponent");
inline const CIMName Identifier("Identifier");
inline const CIMName InstanceID("InstanceID");
inline const CIMName Key("Key");
inline const CIMName LastLoginFailureRemoteNodeName("LastLoginFailureRemoteNodeName");
inline const CIMName LastLoginFailureTime("LastLoginFailureTime");
inline const CIMName LastLoginFailureType("LastLoginFailureType");
inline const CIMName LastSessionFailureRemoteNodeName("LastSessionFailureRemoteNodeName");
inline const CIMName LastSessionFailureType("LastSessionFailureType");
inline const CIMName LoginFailures("LoginFailures");
inline const CIMName LoginRedirects("LoginRedirects");
inline const CIMName MaxTransmitDataSegmentLength("MaxTransmitDataSegmentLength");
inline const CIMName MaxUnitsControlled("MaxUnitsControlled");
inline const CIMName MutualAuthentication("MutualAuthentication");
inline const CIMName Name("Name");
inline const CIMName NameFormat("NameFormat");
inline const CIMName NameNamespace("NameNamespace");
inline const CIMName NegotiationLoginFailures("NegotiationLoginFailures");
inline const CIMName NormalLogouts("NormalLogouts");
inline const CIMName NumberOfBlocks("NumberOfBlocks");
inline const CIMName OctetsReceived("OctetsReceived");
inline const CIMName OctetsSent("OctetsSent");
inline const CIMName OperationalStatus("OperationalStatus");
inline const CIMName OtherLoginFailures("OtherLoginFailures");
inline const CIMName OtherLogouts("OtherLogouts");
inline const CIMName OtherTypeDescription("OtherTypeDescription");
inline const CIMName PartComponent("PartComponent");
inline const CIMName PortNumber("PortNumber");
inline const CIMName Primordial("Primordial");
inline const CIMName ProtocolIFType("ProtocolIFType");
inline const CIMName ReceiveDiscards("ReceiveDiscards");
inline const CIMName ReceiveErrors("ReceiveErrors");
inline const CIMName ResponsePDUsTransferred("ResponsePDUsTransferred");
inline const CIMName Role("Role");
inline const CIMName SendDiscards("SendDiscards");
inline const CIMName SendErrors("SendErrors");
inline const CIMName SendingMarkers("SendingMarkers");
inline const CIMName SessionConnectionTimeoutFailures("SessionConnectionTimeoutFailures");
inline const CIMName SessionDigestFailures("SessionDigestFailures");
inline const CIMName SessionFailures("SessionFailures");
inline const CIMName SessionFormatErrors("SessionFormatErrors");
inline const CIMName SessionType("SessionType");
inline const CIMName SourceOrSink("SourceOrSink");
inline const CIMName SuccessfulLogins("SuccessfulLogins");
inline const CIMName SystemCreationClassName("SystemCreationClassName");
inline const CIMName SystemName("SystemName");
inline const CIMName TSIH("TSIH");
// NOLINTEND(readability-identifier-naming)

} // namespace array::name
