// Builders that give a path, or an instance with that path and its keys as properties, and log what
// they were built from. Ids stand in the keys as their key texts.

#include <initializer_list>
#include <string>

#include <Pegasus/Common/CIMProperty.h>

#include "engine/DRAVEngine.h"
#include "engine/DRAVKeys.h"
#include "engine/builders/Builders.h"
#include "tests/support/ScriptedEngine.h"
#include "tests/support/Text.h"

namespace Pegasus {

using namespace scripted;

namespace {

struct Key {
    Key(const char* keyName, const CIMValue& keyValue) : name(keyName), value(keyValue) {}
    Key(const char* keyName, Uint32 id) : Key(keyName, String(DRAVObjectKey(id))) {}

    CIMName name;
    CIMValue value;
};

using Keys = std::initializer_list<Key>;

CIMObjectPath path(const CIMName& className, Keys keys) {
    Array<CIMKeyBinding> bindings;
    for (const Key& key : keys) {
        bindings.append(CIMKeyBinding(key.name, key.value));
    }
    return CIMObjectPath(*DRAVEngine::_OvrinHostNamePtr, CIMNamespaceName("root/snia"), className,
                         bindings);
}

CIMObjectPath endpointPath(const String& targetName) {
    return path("CIM_iSCSIProtocolEndpoint",
                {{"Name", CIMValue(targetName + String(",t,0x0001"))}});
}

// The log's entry of a builder, then what it gives.
class Logged {
public:
    template<class... Arguments>
    explicit Logged(const char* builder, const std::string& first, const Arguments&... more) {
        noteCall(builder, (first + ... + (", " + more)));
    }

    CIMObjectPath path(const CIMName& className, Keys keys) const {
        return Pegasus::path(className, keys);
    }

    CIMInstance instance(const CIMName& className, Keys keys) const {
        CIMInstance made(className);
        for (const Key& key : keys) {
            const bool reference = key.value.getType() == CIMTYPE_REFERENCE;
            made.addProperty(CIMProperty(key.name, key.value, 0,
                                         reference ? CIMName("CIM_ManagedElement") : CIMName()));
        }
        made.setPath(path(className, keys));
        return made;
    }
};

} // namespace

iSCSINodePath::iSCSINodePath(Uint32 targetId)
    : CIMObjectPath(Logged("iSCSINodePath", idText(targetId))
                        .path("CIM_SCSIProtocolController", {{"DeviceID", targetId}})) {}

iSCSINodeInstance::iSCSINodeInstance(Boolean includeQualifiers, const CIMPropertyList& propertyList,
                                     Uint32 targetId)
    : CIMInstance(
          Logged("iSCSINodeInstance", text(includeQualifiers), text(propertyList), idText(targetId))
              .instance("CIM_SCSIProtocolController", {{"DeviceID", targetId}})) {}

StorageVolumePath::StorageVolumePath(Uint32 volumeId)
    : CIMObjectPath(Logged("StorageVolumePath", idText(volumeId))
                        .path("CIM_StorageVolume", {{"DeviceID", volumeId}})) {}

StorageVolumeInstance::StorageVolumeInstance(Boolean includeQualifiers,
                                             const CIMPropertyList& propertyList, Uint32 volumeId)
    : CIMInstance(Logged("StorageVolumeInstance", text(includeQualifiers), text(propertyList),
                         idText(volumeId))
                      .instance("CIM_StorageVolume", {{"DeviceID", volumeId}})) {}

StorageVolumeInstance::StorageVolumeInstance(Boolean includeQualifiers,
                                             const CIMPropertyList& propertyList,
                                             const DRAVVolume& volume)
    : CIMInstance(Logged("StorageVolumeInstance", text(includeQualifiers), text(propertyList),
                         recordText(volume))
                      .instance("CIM_StorageVolume", {{"DeviceID", volume.objectID}})) {}

iSCSISessionPath::iSCSISessionPath(const CIMName& className, Uint32 sessionId)
    : CIMObjectPath(Logged("iSCSISessionPath", text(className), idText(sessionId))
                        .path(className, {{"InstanceID", sessionId}})) {}

iSCSISessionInstance::iSCSISessionInstance(const CIMName& className, Boolean includeQualifiers,
                                           const CIMPropertyList& propertyList, Uint32 sessionId)
    : CIMInstance(Logged("iSCSISessionInstance", text(className), text(includeQualifiers),
                         text(propertyList), idText(sessionId))
                      .instance(className, {{"InstanceID", sessionId}})) {}

iSCSIConnectionPath::iSCSIConnectionPath(const CIMName& className, Uint32 connectionId)
    : CIMObjectPath(Logged("iSCSIConnectionPath", text(className), idText(connectionId))
                        .path(className, {{"InstanceID", connectionId}})) {}

iSCSIConnectionInstance::iSCSIConnectionInstance(const CIMName& className,
                                                 Boolean includeQualifiers,
                                                 const CIMPropertyList& propertyList,
                                                 Uint32 connectionId)
    : CIMInstance(Logged("iSCSIConnectionInstance", text(className), text(includeQualifiers),
                         text(propertyList), idText(connectionId))
                      .instance(className, {{"InstanceID", connectionId}})) {}

iSCSIProtocolEndpointPath::iSCSIProtocolEndpointPath(const String& targetName)
    : CIMObjectPath(
          (Logged("iSCSIProtocolEndpointPath", quoted(targetName)), endpointPath(targetName))) {}

iSCSIProtocolEndpointInstance::iSCSIProtocolEndpointInstance(Boolean includeQualifiers,
                                                             const CIMPropertyList& propertyList,
                                                             Uint32 targetId)
    : CIMInstance(Logged("iSCSIProtocolEndpointInstance", text(includeQualifiers),
                         text(propertyList), idText(targetId))
                      .instance("CIM_iSCSIProtocolEndpoint", {{"Name", targetId}})) {}

TCPProtocolEndpointPath::TCPProtocolEndpointPath(Uint32 endpointId)
    : CIMObjectPath(Logged("TCPProtocolEndpointPath", idText(endpointId))
                        .path("CIM_TCPProtocolEndpoint", {{"Name", endpointId}})) {}

TCPProtocolEndpointInstance::TCPProtocolEndpointInstance(Boolean includeQualifiers,
                                                         const CIMPropertyList& propertyList,
                                                         Uint32 endpointId)
    : CIMInstance(Logged("TCPProtocolEndpointInstance", text(includeQualifiers), text(propertyList),
                         idText(endpointId))
                      .instance("CIM_TCPProtocolEndpoint", {{"Name", endpointId}})) {}

EndpointOfNetworkPipePath::EndpointOfNetworkPipePath(const String& targetName,
                                                     const CIMName& pipeClassName, Uint32 sessionId)
    : CIMObjectPath(Logged("EndpointOfNetworkPipePath", quoted(targetName), text(pipeClassName),
                           idText(sessionId))
                        .path("CIM_EndpointOfNetworkPipe",
                              {{"Antecedent", endpointPath(targetName)},
                               {"Dependent", path(pipeClassName, {{"InstanceID", sessionId}})}})) {}

EndpointOfNetworkPipeInstance::EndpointOfNetworkPipeInstance(Boolean includeQualifiers,
                                                             const String& targetName,
                                                             const CIMName& pipeClassName,
                                                             Uint32 sessionId)
    : CIMInstance(
          Logged("EndpointOfNetworkPipeInstance", text(includeQualifiers), quoted(targetName),
                 text(pipeClassName), idText(sessionId))
              .instance("CIM_EndpointOfNetworkPipe",
                        {{"Antecedent", endpointPath(targetName)},
                         {"Dependent", path(pipeClassName, {{"InstanceID", sessionId}})}})) {}

NetworkPipeCompositionPath::NetworkPipeCompositionPath(const CIMName& associationClassName,
                                                       Uint32 sessionId, Uint32 connectionId)
    : CIMObjectPath(Logged("NetworkPipeCompositionPath", text(associationClassName),
                           idText(sessionId), idText(connectionId))
                        .path(associationClassName,
                              {{"GroupComponent", sessionId}, {"PartComponent", connectionId}})) {}

NetworkPipeCompositionInstance::NetworkPipeCompositionInstance(const CIMName& associationClassName,
                                                               Boolean includeQualifiers,
                                                               Uint32 sessionId,
                                                               Uint32 connectionId)
    : CIMInstance(Logged("NetworkPipeCompositionInstance", text(associationClassName),
                         text(includeQualifiers), idText(sessionId), idText(connectionId))
                      .instance(associationClassName,
                                {{"GroupComponent", sessionId}, {"PartComponent", connectionId}})) {
}

iSCSISessionSettingsInstance::iSCSISessionSettingsInstance(const CIMName& className,
                                                           Boolean includeQualifiers,
                                                           const CIMPropertyList& propertyList,
                                                           Uint32 settingsId)
    : CIMInstance(Logged("iSCSISessionSettingsInstance", text(className), text(includeQualifiers),
                         text(propertyList), idText(settingsId))
                      .instance(className, {{"InstanceID", settingsId}})) {}

iSCSIConnectionSettingsInstance::iSCSIConnectionSettingsInstance(
    const CIMName& className, Boolean includeQualifiers, const CIMPropertyList& propertyList,
    Uint32 settingsId)
    : CIMInstance(Logged("iSCSIConnectionSettingsInstance", text(className),
                         text(includeQualifiers), text(propertyList), idText(settingsId))
                      .instance(className, {{"InstanceID", settingsId}})) {}

iSCSILoginStatisticsInstance::iSCSILoginStatisticsInstance(Boolean includeQualifiers,
                                                           const CIMPropertyList& propertyList,
                                                           Uint32 targetId)
    : CIMInstance(Logged("iSCSILoginStatisticsInstance", text(includeQualifiers),
                         text(propertyList), idText(targetId))
                      .instance("CIM_iSCSILoginStatistics", {{"InstanceID", targetId}})) {}

iSCSISessionFailuresInstance::iSCSISessionFailuresInstance(Boolean includeQualifiers,
                                                           const CIMPropertyList& propertyList,
                                                           Uint32 targetId)
    : CIMInstance(Logged("iSCSISessionFailuresInstance", text(includeQualifiers),
                         text(propertyList), idText(targetId))
                      .instance("CIM_iSCSISessionFailures", {{"InstanceID", targetId}})) {}

iSCSISessionStatisticsInstance::iSCSISessionStatisticsInstance(Boolean includeQualifiers,
                                                               const CIMPropertyList& propertyList,
                                                               Uint32 sessionId)
    : CIMInstance(Logged("iSCSISessionStatisticsInstance", text(includeQualifiers),
                         text(propertyList), idText(sessionId))
                      .instance("CIM_iSCSISessionStatistics", {{"InstanceID", sessionId}})) {}

MACStatisticsInstance::MACStatisticsInstance(Boolean includeQualifiers, Uint32 endpointId)
    : CIMInstance(Logged("MACStatisticsInstance", text(includeQualifiers), idText(endpointId))
                      .instance("Ovrin_MACStatistics", {{"InstanceID", endpointId}})) {}

} // namespace Pegasus
