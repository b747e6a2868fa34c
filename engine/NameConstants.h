#pragma once

#include <cstring>
#include <unistd.h>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

// The names that the managed-object library and the providers share. Each source that includes this
// has its own copy of the table, built when the library is loaded and never changed. Every
// provider's source does, whether it uses the names or not. Wanted: see docs/contract.md, The table
// of names.

namespace Pegasus {

// The namespace of every object path that the module builds.
static const CIMNamespaceName SNIA_NAMESPACE("root/snia");

// Standard classes.
static const CIMName CLASS_iSCSISession("CIM_iSCSISession");
static const CIMName CLASS_iSCSIConnection("CIM_iSCSIConnection");
static const CIMName CLASS_iSCSILoginStatistics("CIM_iSCSILoginStatistics");
static const CIMName CLASS_iSCSISessionFailures("CIM_iSCSISessionFailures");
static const CIMName CLASS_iSCSISessionStatistics("CIM_iSCSISessionStatistics");
static const CIMName CLASS_Realizes("CIM_Realizes");
static const CIMName CLASS_PackageInChassis("CIM_PackageInChassis");
static const CIMName CLASS_ProductParentChild("CIM_ProductParentChild");
static const CIMName CLASS_PackagedComponent("CIM_PackagedComponent");
static const CIMName CLASS_RemoteServiceAccessPoint("CIM_RemoteServiceAccessPoint");
static const CIMName CLASS_RealizesExtent("CIM_RealizesExtent");
static const CIMName CLASS_ConcreteJob("CIM_ConcreteJob");
static const CIMName CLASS_StorageSetting("CIM_StorageSetting");
static const CIMName CLASS_iSCSISessionSettings("CIM_iSCSISessionSettings");
static const CIMName CLASS_iSCSIConnectionSettings("CIM_iSCSIConnectionSettings");
static const CIMName CLASS_iSCSICapabilities("CIM_iSCSICapabilities");
static const CIMName CLASS_iSCSIConfigurationCapabilities("CIM_iSCSIConfigurationCapabilities");
static const CIMName CLASS_SystemSpecificCollection("CIM_SystemSpecificCollection");
static const CIMName CLASS_MemberOfCollection("CIM_MemberOfCollection");

// Vendor classes.
static const CIMName CLASS_Ovrin_iSNSSettings("Ovrin_iSNSSettings");
static const CIMName CLASS_Ovrin_TCPSettings("Ovrin_TCPSettings");
static const CIMName CLASS_Ovrin_IPSettings("Ovrin_IPSettings");
static const CIMName CLASS_Ovrin_NetworkRoute("Ovrin_NetworkRoute");
static const CIMName CLASS_Ovrin_SystemSettings("Ovrin_SystemSettings");
static const CIMName CLASS_Ovrin_FirmwareImagesInfo("Ovrin_FirmwareImagesInfo");
static const CIMName CLASS_Ovrin_MACStatistics("Ovrin_MACStatistics");
static const CIMName
    CLASS_Ovrin_SystemManagementPortStatistics("Ovrin_SystemManagementPortStatistics");
static const CIMName CLASS_Ovrin_SystemiSCSIStatistics("Ovrin_SystemiSCSIStatistics");
static const CIMName CLASS_Ovrin_SystemTCPStatistics("Ovrin_SystemTCPStatistics");
static const CIMName CLASS_Ovrin_Event("Ovrin_Event");

// The storage volume's class as a text and as a name.
static const String STRING_StorageVolume("CIM_StorageVolume");
static const CIMName CLASS_StorageVolume("CIM_StorageVolume");

// Properties.
static const CIMName PROPERTY_CreationClassName("CreationClassName");
static const CIMName PROPERTY_SystemName("SystemName");
static const CIMName PROPERTY_SystemCreationClassName("SystemCreationClassName");
static const CIMName PROPERTY_DeviceID("DeviceID");
static const CIMName PROPERTY_Name("Name");
static const CIMName PROPERTY_Dedicated("Dedicated");
static const CIMName PROPERTY_OperationalStatus("OperationalStatus");
static const CIMName PROPERTY_ElementName("ElementName");
static const CIMName PROPERTY_NameFormat("NameFormat");

// References and properties, as texts.
static const String STRING_GroupComponent("GroupComponent");
static const String STRING_PartComponent("PartComponent");
static const String STRING_Dependent("Dependent");
static const String STRING_Antecedent("Antecedent");
static const String STRING_ConformantStandard("ConformantStandard");
static const String STRING_ManagedElement("ManagedElement");
static const String STRING_Capabilities("Capabilities");
static const String STRING_SettingData("SettingData");
static const String STRING_Stats("Stats");
static const String STRING_AvailableSAP("AvailableSAP");

// The zone part of /etc/localtime's target, such as "Europe/Berlin"; null if the link cannot be
// read or the part has 33 characters or more. The text stands in the function's own buffer and
// holds until the next call, which must not run at the same time.
inline const char* localTimeZoneName() {
    constexpr size_t prefixLength = 20; // of "/usr/share/zoneinfo/"
    constexpr size_t zoneLimit = 33;
    static char target[4095];
    const ssize_t length = readlink("/etc/localtime", target, sizeof target - 1);
    if (length < static_cast<ssize_t>(prefixLength)) {
        return nullptr;
    }
    target[length] = '\0';
    const char* zone = target + prefixLength;
    return std::strlen(zone) < zoneLimit ? zone : nullptr;
}

} // namespace Pegasus
