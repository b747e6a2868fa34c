#pragma once

#include "engine/DRAVVolume.h"
#include "engine/builders/Builders.h"
#include "tests/array/adapter/Sample.h"

namespace array {

// A builder of instances, called for the object of its class among some.
struct InstanceRow {
    const char* className;
    bool takesPropertyList;
    Pegasus::CIMInstance (*build)(bool includeQualifiers, const Pegasus::CIMPropertyList& list,
                                  const Sample::Ids& ids);
};

inline Pegasus::DRAVVolume volumeThatIsGone() {
    Pegasus::DRAVVolume volume;
    volume.name = "60014051A2B3C4D5";
    volume.state = 3;
    return volume;
}

using ListRef = const Pegasus::CIMPropertyList&;
using IdsRef = const Sample::Ids&;

inline const InstanceRow everyInstance[] = {
    {"CIM_SCSIProtocolController", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSINodeInstance(qualifiers, list, ids.target);
     }},
    {"CIM_StorageVolume", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::StorageVolumeInstance(qualifiers, list, ids.volume);
     }},
    {"CIM_StorageVolume", true,
     [](bool qualifiers, ListRef list, IdsRef) -> Pegasus::CIMInstance {
         return Pegasus::StorageVolumeInstance(qualifiers, list, volumeThatIsGone());
     }},
    {"CIM_iSCSISession", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSISessionInstance("CIM_iSCSISession", qualifiers, list, ids.session);
     }},
    {"CIM_iSCSIConnection", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSIConnectionInstance("CIM_iSCSIConnection", qualifiers, list,
                                                 ids.connection);
     }},
    {"CIM_iSCSIProtocolEndpoint", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSIProtocolEndpointInstance(qualifiers, list, ids.target);
     }},
    {"CIM_TCPProtocolEndpoint", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::TCPProtocolEndpointInstance(qualifiers, list, ids.endpoint);
     }},
    {"CIM_EndpointOfNetworkPipe", false,
     [](bool qualifiers, ListRef, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::EndpointOfNetworkPipeInstance(qualifiers, "iqn.2026-01.com.example:any",
                                                       "CIM_iSCSISession", ids.session);
     }},
    {"CIM_NetworkPipeComposition", false,
     [](bool qualifiers, ListRef, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::NetworkPipeCompositionInstance("CIM_NetworkPipeComposition", qualifiers,
                                                        ids.session, ids.connection);
     }},
    {"CIM_iSCSISessionSettings", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSISessionSettingsInstance("CIM_iSCSISessionSettings", qualifiers, list,
                                                      ids.sessionSettings);
     }},
    {"CIM_iSCSIConnectionSettings", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSIConnectionSettingsInstance("CIM_iSCSIConnectionSettings", qualifiers,
                                                         list, ids.connectionSettings);
     }},
    {"CIM_iSCSILoginStatistics", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSILoginStatisticsInstance(qualifiers, list, ids.target);
     }},
    {"CIM_iSCSISessionFailures", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSISessionFailuresInstance(qualifiers, list, ids.target);
     }},
    {"CIM_iSCSISessionStatistics", true,
     [](bool qualifiers, ListRef list, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::iSCSISessionStatisticsInstance(qualifiers, list, ids.session);
     }},
    {"Ovrin_MACStatistics", false,
     [](bool qualifiers, ListRef, IdsRef ids) -> Pegasus::CIMInstance {
         return Pegasus::MACStatisticsInstance(qualifiers, ids.endpoint);
     }},
};

} // namespace array
