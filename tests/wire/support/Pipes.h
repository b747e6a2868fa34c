// Paths of sessions and of what they run between, in the array of tests/wire/support/Array.h.
#pragma once

#include "tests/wire/support/Xml.h"

#include <string>

namespace wire {

inline const std::string sessionClass = "CIM_iSCSISession";
inline const std::string connectionClass = "CIM_iSCSIConnection";
inline const std::string targetEndpointClass = "CIM_iSCSIProtocolEndpoint";
inline const std::string tcpEndpointClass = "CIM_TCPProtocolEndpoint";
inline const std::string pipeEndClass = "CIM_EndpointOfNetworkPipe";
inline const std::string compositionClass = "CIM_NetworkPipeComposition";

inline const std::string target1 = "iqn.2026-01.com.example:t1";
inline const std::string target2 = "iqn.2026-01.com.example:t2";
inline const std::string host1 = "iqn.2026-01.com.example:host1";
inline const std::string portal1 = "192.0.2.10:3260";

// By the key text of its id.
inline Xml session(const std::string& key) {
    return instanceName(sessionClass, {{"InstanceID", key}});
}
inline Xml connection(const std::string& key) {
    return instanceName(connectionClass, {{"InstanceID", key}});
}

// By its name.
inline Xml targetEndpoint(const std::string& name) {
    return instanceName(targetEndpointClass, {{"Name", name}});
}
inline Xml tcpEndpoint(const std::string& name) {
    return instanceName(tcpEndpointClass, {{"Name", name}});
}

} // namespace wire
