// Names that requests are made of: of classes, and of what is in the array of
// tests/wire/support/Array.h.
#pragma once

#include <string>

#include "tests/wire/support/Xml.h"

namespace wire {

// Classes

inline const std::string identityService = "CIM_StorageHardwareIDManagementService";
inline const std::string maskingService = "CIM_ControllerConfigurationService";

inline const std::string hostClass = "CIM_StorageHardwareID";
inline const std::string privilegeClass = "CIM_AuthorizedPrivilege";
inline const std::string subjectClass = "CIM_AuthorizedSubject";
inline const std::string grantClass = "CIM_AuthorizedTarget";
inline const std::string secretClass = "CIM_SharedSecret";
inline const std::string controllerClass = "CIM_SCSIProtocolController";
inline const std::string unitClass = "CIM_ProtocolControllerForUnit";
inline const std::string volumeClass = "CIM_StorageVolume";

inline const std::string sessionClass = "CIM_iSCSISession";
inline const std::string connectionClass = "CIM_iSCSIConnection";
inline const std::string targetEndpointClass = "CIM_iSCSIProtocolEndpoint";
inline const std::string tcpEndpointClass = "CIM_TCPProtocolEndpoint";
inline const std::string pipeEndClass = "CIM_EndpointOfNetworkPipe";
inline const std::string compositionClass = "CIM_NetworkPipeComposition";
inline const std::string sessionSettings = "CIM_iSCSISessionSettings";
inline const std::string connectionSettings = "CIM_iSCSIConnectionSettings";

// The array

inline const std::string host1 = "iqn.2026-01.com.example:host1"; // may reach the first target
inline const std::string host2 = "iqn.2026-01.com.example:host2"; // may reach none
inline const std::string target1 = "iqn.2026-01.com.example:t1";  // has a secret
inline const std::string target2 = "iqn.2026-01.com.example:t2";
inline const std::string mailVolume = "60014051A2B3C4D5E6F7A8B9C0D1E2F3"; // unit 1 of the first
inline const std::string logsVolume = "60014051A2B3C4D5E6F7A8B9C0D1E2F4"; // under no target
inline const std::string portal1 = "192.0.2.10:3260";

// Its objects by their keys

inline Xml host(int number) {
    return instanceName(hostClass, {{"InstanceID", "Ovrin:0D00000" + std::to_string(number)}});
}
inline Xml privilege(int number) {
    return instanceName(privilegeClass, {{"InstanceID", "Ovrin:0D00000" + std::to_string(number)}});
}
inline Xml controller(int number) {
    return instanceName(controllerClass, {{"DeviceID", "Ovrin:0E00000" + std::to_string(number)}});
}
inline Xml volume(const std::string& key) {
    return instanceName(volumeClass, {{"DeviceID", key}});
}
inline Xml session(const std::string& key) {
    return instanceName(sessionClass, {{"InstanceID", key}});
}
inline Xml connection(const std::string& key) {
    return instanceName(connectionClass, {{"InstanceID", key}});
}
inline Xml targetEndpoint(const std::string& name) {
    return instanceName(targetEndpointClass, {{"Name", name}});
}
inline Xml tcpEndpoint(const std::string& name) {
    return instanceName(tcpEndpointClass, {{"Name", name}});
}

// Of the first target
inline const Xml sessionSettings1 =
    instanceName(sessionSettings, {{"InstanceID", "Ovrin:23000001"}});

// What is answered when a key or an element is missing.
inline const std::string outOfBounds = "1 CIM_ERR_FAILED: index out of bounds";

} // namespace wire
