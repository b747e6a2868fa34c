// The class declarations in mof/ against the published schema.

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "server/operation/Utf8.h"
#include "server/schema/MofReader.h"

using namespace Pegasus;

namespace smisd {
namespace {

enum Kind { concreteClass, abstractClass, concreteAssociation, abstractAssociation };

struct ClassFact {
    const char* name;
    const char* superclass;
    const char* keys; // sorted
    Kind kind;
};

void PrintTo(const ClassFact& fact, std::ostream* out) {
    *out << fact.name;
}

constexpr const char* scopedName = "CreationClassName Name SystemCreationClassName SystemName";
constexpr const char* scopedDevice =
    "CreationClassName DeviceID SystemCreationClassName SystemName";

const ClassFact classFacts[] = {
    {"CIM_ManagedElement", "", "", abstractClass},
    {"CIM_ManagedSystemElement", "CIM_ManagedElement", "", abstractClass},
    {"CIM_LogicalElement", "CIM_ManagedSystemElement", "", abstractClass},
    {"CIM_EnabledLogicalElement", "CIM_LogicalElement", "", abstractClass},
    {"CIM_Collection", "CIM_ManagedElement", "", abstractClass},
    {"CIM_SystemSpecificCollection", "CIM_Collection", "InstanceID", concreteClass},
    {"CIM_SettingData", "CIM_ManagedElement", "InstanceID", abstractClass},
    {"CIM_StatisticalData", "CIM_ManagedElement", "InstanceID", abstractClass},
    {"CIM_Dependency", "", "Antecedent Dependent", abstractAssociation},
    {"CIM_Component", "", "GroupComponent PartComponent", abstractAssociation},
    {"CIM_Job", "CIM_LogicalElement", "", abstractClass},
    {"CIM_ConcreteJob", "CIM_Job", "InstanceID", concreteClass},
    {"CIM_System", "CIM_EnabledLogicalElement", "CreationClassName Name", abstractClass},
    {"CIM_ComputerSystem", "CIM_System", "CreationClassName Name", concreteClass},
    {"CIM_Service", "CIM_EnabledLogicalElement", scopedName, abstractClass},
    {"CIM_ServiceAccessPoint", "CIM_EnabledLogicalElement", scopedName, abstractClass},
    {"CIM_ProtocolEndpoint", "CIM_ServiceAccessPoint", scopedName, concreteClass},
    {"CIM_TCPProtocolEndpoint", "CIM_ProtocolEndpoint", scopedName, concreteClass},
    {"CIM_LogicalDevice", "CIM_EnabledLogicalElement", scopedDevice, abstractClass},
    {"CIM_ProtocolController", "CIM_LogicalDevice", scopedDevice, abstractClass},
    {"CIM_SCSIProtocolController", "CIM_ProtocolController", scopedDevice, concreteClass},
    {"CIM_StorageExtent", "CIM_LogicalDevice", scopedDevice, concreteClass},
    {"CIM_StorageVolume", "CIM_StorageExtent", scopedDevice, concreteClass},
    {"CIM_SecurityService", "CIM_Service", scopedName, abstractClass},
    {"CIM_AuthenticationService", "CIM_SecurityService", scopedName, concreteClass},
    {"CIM_IdentityManagementService", "CIM_AuthenticationService", scopedName, concreteClass},
    {"CIM_StorageHardwareIDManagementService", "CIM_IdentityManagementService", scopedName,
     concreteClass},
    {"CIM_Identity", "CIM_ManagedElement", "InstanceID", concreteClass},
    {"CIM_StorageHardwareID", "CIM_Identity", "InstanceID", concreteClass},
    {"CIM_GatewayPathID", "CIM_StorageHardwareID", "InstanceID", concreteClass},
    {"CIM_StorageClientSettingData", "CIM_SettingData", "InstanceID", concreteClass},
    {"CIM_Privilege", "CIM_ManagedElement", "InstanceID", concreteClass},
    {"CIM_AuthorizedPrivilege", "CIM_Privilege", "InstanceID", concreteClass},
    {"CIM_AuthorizedSubject", "", "Privilege PrivilegedElement", concreteAssociation},
    {"CIM_AuthorizedTarget", "", "Privilege TargetElement", concreteAssociation},
    {"CIM_Credential", "CIM_ManagedElement", "", abstractClass},
    {"CIM_SharedSecret", "CIM_Credential",
     "RemoteID ServiceCreationClassName ServiceName SystemCreationClassName SystemName",
     concreteClass},
    {"CIM_ControllerConfigurationService", "CIM_Service", scopedName, concreteClass},
    {"CIM_ProtocolControllerForDevice", "CIM_Dependency", "Antecedent Dependent",
     abstractAssociation},
    {"CIM_ProtocolControllerForUnit", "CIM_ProtocolControllerForDevice", "Antecedent Dependent",
     concreteAssociation},
    {"CIM_iSCSISessionSettings", "CIM_SettingData", "InstanceID", concreteClass},
    {"CIM_iSCSIConnectionSettings", "CIM_SettingData", "InstanceID", concreteClass},
    {"CIM_iSCSILoginStatistics", "CIM_StatisticalData", "InstanceID", concreteClass},
    {"CIM_iSCSISessionFailures", "CIM_StatisticalData", "InstanceID", concreteClass},
    {"CIM_iSCSISessionStatistics", "CIM_StatisticalData", "InstanceID", concreteClass},
    {"Ovrin_MACStatistics", "CIM_StatisticalData", "InstanceID", concreteClass},
    {"CIM_SCSIProtocolEndpoint", "CIM_ProtocolEndpoint", scopedName, concreteClass},
    {"CIM_iSCSIProtocolEndpoint", "CIM_SCSIProtocolEndpoint", scopedName, concreteClass},
    {"CIM_NetworkPipe", "CIM_EnabledLogicalElement", "InstanceID", concreteClass},
    {"CIM_iSCSISession", "CIM_NetworkPipe", "InstanceID", concreteClass},
    {"CIM_iSCSIConnection", "CIM_NetworkPipe", "InstanceID", concreteClass},
    {"CIM_EndpointOfNetworkPipe", "CIM_Dependency", "Antecedent Dependent", concreteAssociation},
    {"CIM_NetworkPipeComposition", "CIM_Component", "GroupComponent PartComponent",
     concreteAssociation},
};

struct FeatureFact {
    const char* className;
    const char* name;
    const char* type; // a property's type; a method's return type and parameters
};

const FeatureFact propertyFacts[] = {
    {"CIM_ManagedElement", "InstanceID", "string"},
    {"CIM_ManagedSystemElement", "OperationalStatus", "uint16[]"},
    {"CIM_EnabledLogicalElement", "TimeOfLastStateChange", "datetime"},
    {"CIM_StorageHardwareID", "IDType", "uint16"},
    {"CIM_StorageHardwareID", "CurrentlyAuthenticated", "boolean"},
    {"CIM_AuthorizedPrivilege", "PrivilegeGranted", "boolean"},
    {"CIM_AuthorizedSubject", "Privilege", "CIM_AuthorizedPrivilege REF"},
    {"CIM_AuthorizedTarget", "TargetElement", "CIM_ManagedElement REF"},
    {"CIM_SharedSecret", "Secret", "string"},
    {"CIM_SCSIProtocolController", "DeviceID", "string"},
    {"CIM_SCSIProtocolController", "NameFormat", "uint16"},
    {"CIM_ProtocolControllerForUnit", "DeviceNumber", "string"},
    {"CIM_ProtocolControllerForUnit", "DeviceAccess", "uint16"},
    {"CIM_ProtocolControllerForUnit", "Antecedent", "CIM_ProtocolController REF"},
    {"CIM_ProtocolControllerForUnit", "Dependent", "CIM_LogicalDevice REF"},
    {"CIM_StorageVolume", "BlockSize", "uint64"},
    {"CIM_StorageVolume", "DeltaReservation", "uint8"},
    {"CIM_StorageVolume", "Primordial", "boolean"},
    {"CIM_iSCSISessionSettings", "InitialR2TPreference", "boolean"},
    {"CIM_iSCSISessionSettings", "MaxDataBurstLength", "uint32"},
    {"CIM_iSCSIConnectionSettings", "PrimaryAuthenticationMethod", "uint16"},
    {"CIM_iSCSILoginStatistics", "LastLoginFailureRemoteAddress", "uint32"},
    {"CIM_iSCSISessionStatistics", "BytesReceived", "uint64"},
    {"CIM_iSCSISession", "TSIH", "uint32"},
    {"CIM_iSCSIConnection", "MutualAuthentication", "boolean"},
    {"CIM_TCPProtocolEndpoint", "PortNumber", "uint32"},
    {"CIM_EndpointOfNetworkPipe", "Antecedent", "CIM_ProtocolEndpoint REF"},
    {"CIM_NetworkPipeComposition", "PartComponent", "CIM_NetworkPipe REF"},
    {"CIM_Job", "RunDayOfWeek", "sint8"},
    {"Ovrin_MACStatistics", "FramesReceived", "uint64"},
};

const FeatureFact methodFacts[] = {
    {"CIM_EnabledLogicalElement", "RequestStateChange",
     "uint32(in uint16 RequestedState, out CIM_ConcreteJob REF Job, in datetime TimeoutPeriod)"},
    {"CIM_StorageHardwareIDManagementService", "CreateStorageHardwareID",
     "uint32(in string ElementName, in string StorageID, in uint16 IDType, in string OtherIDType, "
     "in CIM_StorageClientSettingData REF Setting, out CIM_StorageHardwareID REF HardwareID)"},
    {"CIM_StorageHardwareIDManagementService", "DeleteStorageHardwareID",
     "uint32(in CIM_StorageHardwareID REF HardwareID)"},
    {"CIM_ControllerConfigurationService", "ExposePaths",
     "uint32(out CIM_ConcreteJob REF Job, in string[] LUNames, in string[] InitiatorPortIDs, "
     "in string[] TargetPortIDs, in string[] DeviceNumbers, in uint16[] DeviceAccesses, "
     "inout CIM_SCSIProtocolController REF[] ProtocolControllers)"},
    {"CIM_ControllerConfigurationService", "HidePaths",
     "uint32(out CIM_ConcreteJob REF Job, in string[] LUNames, in string[] InitiatorPortIDs, "
     "in string[] TargetPortIDs, inout CIM_SCSIProtocolController REF[] ProtocolControllers)"},
    {"CIM_ControllerConfigurationService", "AttachDevice",
     "uint32(in CIM_ProtocolController REF ProtocolController, in CIM_LogicalDevice REF Device, "
     "inout string DeviceNumber)"},
    {"CIM_LogicalDevice", "SetPowerState", "uint32(in uint16 PowerState, in datetime Time)"},
    {"CIM_StatisticalData", "ResetSelectedStats", "uint32(in string[] SelectedStatistics)"},
};

// Of a property or parameter.
template<class Feature>
std::string typeText(const Feature& feature) {
    const CIMName reference = feature.getReferenceClassName();
    const std::string type = feature.getType() == CIMTYPE_REFERENCE
                                 ? toUtf8(reference.getString()) + " REF"
                                 : cimTypeToString(feature.getType());
    return feature.isArray() ? type + "[]" : type;
}

template<class Element>
bool isTrue(const Element& element, const char* qualifier, bool otherwise) {
    const Uint32 at = element.findQualifier(CIMName(qualifier));
    if (at == PEG_NOT_FOUND) {
        return otherwise;
    }
    Boolean value = false;
    element.getQualifier(at).getValue().get(value);
    return value;
}

std::string methodText(const CIMConstMethod& method) {
    std::string text;
    for (Uint32 i = 0; i < method.getParameterCount(); ++i) {
        const CIMConstParameter parameter = method.getParameter(i);
        const bool in = isTrue(parameter, "In", true);
        const bool out = isTrue(parameter, "Out", false);
        text += (i ? ", " : "") + std::string(in ? "in" : "") + (out ? "out " : " ") +
                typeText(parameter) + " " + toUtf8(parameter.getName().getString());
    }
    return std::string(cimTypeToString(method.getType())) + "(" + text + ")";
}

const Schema& schema() {
    static Repository repository;
    if (repository.schemas().empty()) {
        readMofDirectory(MOF_DIRECTORY, repository);
    }
    return *repository.find(CIMNamespaceName(elementNamespace));
}

const CIMClass& classNamed(const char* name) {
    const CIMClass* found = schema().findClass(CIMName(name));
    if (!found) {
        throw std::runtime_error(std::string("no class ") + name);
    }
    return *found;
}

class AccessClass : public testing::TestWithParam<ClassFact> {};

TEST_P(AccessClass, HasTheSuperclassKeysAndKindOfTheSchema) {
    const ClassFact& fact = GetParam();
    const CIMClass& cimClass = classNamed(fact.name);
    EXPECT_EQ(toUtf8(cimClass.getSuperClassName().getString()), fact.superclass);
    Array<CIMName> names;
    cimClass.getKeyNames(names);
    std::vector<std::string> keys;
    for (Uint32 i = 0; i < names.size(); ++i) {
        keys.push_back(toUtf8(names[i].getString()));
    }
    std::sort(keys.begin(), keys.end());
    std::string joined;
    for (const std::string& key : keys) {
        joined += (joined.empty() ? "" : " ") + key;
    }
    EXPECT_EQ(joined, fact.keys);
    EXPECT_EQ(cimClass.isAbstract(),
              fact.kind == abstractClass || fact.kind == abstractAssociation);
    EXPECT_EQ(cimClass.isAssociation(),
              fact.kind == concreteAssociation || fact.kind == abstractAssociation);
}

INSTANTIATE_TEST_SUITE_P(Mof, AccessClass, testing::ValuesIn(classFacts),
                         [](const testing::TestParamInfo<ClassFact>& fact) {
                             return fact.param.name;
                         });

TEST(AccessSchema, DeclaresNoOtherClasses) {
    EXPECT_EQ(schema().subclasses(CIMName(), true).size(), std::size(classFacts));
}

TEST(AccessSchema, PropertiesHaveThePublishedTypes) {
    for (const FeatureFact& fact : propertyFacts) {
        const CIMClass& cimClass = classNamed(fact.className);
        const Uint32 at = cimClass.findProperty(CIMName(fact.name));
        ASSERT_NE(at, PEG_NOT_FOUND) << fact.className << "." << fact.name;
        EXPECT_EQ(typeText(cimClass.getProperty(at)), fact.type)
            << fact.className << "." << fact.name;
    }
}

TEST(AccessSchema, MethodsHaveThePublishedParameters) {
    for (const FeatureFact& fact : methodFacts) {
        const CIMClass& cimClass = classNamed(fact.className);
        const Uint32 at = cimClass.findMethod(CIMName(fact.name));
        ASSERT_NE(at, PEG_NOT_FOUND) << fact.className << "." << fact.name;
        EXPECT_EQ(methodText(cimClass.getMethod(at)), fact.type)
            << fact.className << "." << fact.name;
    }
}

TEST(AccessSchema, LoginParametersHaveTheDefaultsOfThePublishedSchema) {
    const auto defaultOf = [](const char* className, const char* name) {
        const CIMClass& cimClass = classNamed(className);
        return toUtf8(
            cimClass.getProperty(cimClass.findProperty(CIMName(name))).getValue().toString());
    };
    EXPECT_EQ(defaultOf("CIM_iSCSISessionSettings", "MaxDataBurstLength"), "262144");
    EXPECT_EQ(defaultOf("CIM_iSCSISessionSettings", "ImmediateDataPreference"), "TRUE");
    EXPECT_EQ(defaultOf("CIM_iSCSIConnectionSettings", "PrimaryHeaderDigestMethod"), "3");
    EXPECT_EQ(defaultOf("CIM_NetworkPipe", "RequestedState"), "5");
    EXPECT_EQ(defaultOf("CIM_TCPProtocolEndpoint", "ProtocolIFType"), "4111");
}

// Calls `use` with the class, the feature and its name for messages, for each declared feature.
template<class Use>
void eachOwnFeature(Use use) {
    for (const CIMName& name : schema().subclasses(CIMName(), true)) {
        const CIMClass& cimClass = *schema().findClass(name);
        const std::string prefix = toUtf8(name.getString()) + ".";
        for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i) {
            if (!cimClass.getProperty(i).getPropagated()) {
                use(cimClass, cimClass.getProperty(i),
                    prefix + toUtf8(cimClass.getProperty(i).getName().getString()));
            }
        }
        for (Uint32 i = 0; i < cimClass.getMethodCount(); ++i) {
            if (!cimClass.getMethod(i).getPropagated()) {
                use(cimClass, cimClass.getMethod(i),
                    prefix + toUtf8(cimClass.getMethod(i).getName().getString()));
            }
        }
    }
}

TEST(AccessSchema, ExactlyTheFeaturesOfASuperclassAreMarkedAsOverriding) {
    eachOwnFeature([](const CIMClass& cimClass, const auto& feature, const std::string& name) {
        const Uint32 at = feature.findQualifier(CIMName("Override"));
        const bool isInherited = feature.getClassOrigin() != cimClass.getClassName();
        EXPECT_EQ(at != PEG_NOT_FOUND, isInherited) << name;
        if (at != PEG_NOT_FOUND) {
            EXPECT_EQ(feature.getQualifier(at).getValue().toString(), feature.getName().getString())
                << name;
        }
    });
}

TEST(AccessSchema, EachValueHasItsMeaning) {
    eachOwnFeature([](const CIMClass&, const auto& feature, const std::string& name) {
        const Uint32 map = feature.findQualifier(CIMName("ValueMap"));
        const Uint32 values = feature.findQualifier(CIMName("Values"));
        ASSERT_EQ(map == PEG_NOT_FOUND, values == PEG_NOT_FOUND) << name;
        if (map != PEG_NOT_FOUND) {
            EXPECT_EQ(feature.getQualifier(map).getValue().getArraySize(),
                      feature.getQualifier(values).getValue().getArraySize())
                << name;
        }
    });
}

TEST(AccessSchema, EverythingIsDescribed) {
    for (const ClassFact& fact : classFacts) {
        const CIMClass& cimClass = classNamed(fact.name);
        EXPECT_NE(cimClass.findQualifier(CIMName("Description")), PEG_NOT_FOUND) << fact.name;
        EXPECT_NE(cimClass.findQualifier(CIMName("Version")), PEG_NOT_FOUND) << fact.name;
    }
    eachOwnFeature([](const CIMClass&, const auto& feature, const std::string& name) {
        EXPECT_NE(feature.findQualifier(CIMName("Description")), PEG_NOT_FOUND) << name;
    });
}

} // namespace
} // namespace smisd
