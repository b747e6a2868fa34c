#pragma once

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Refusals.h"

namespace Pegasus {

// "CIM_StorageHardwareID": the hosts that the array knows, by their iSCSI names.
class StorageHardwareIDProvider : public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override;
    void terminate() override {}

    void getInstance(const OperationContext& context, const CIMObjectPath& instanceReference,
                     const Boolean includeQualifiers, const Boolean includeClassOrigin,
                     const CIMPropertyList& propertyList,
                     InstanceResponseHandler& handler) override;

    void enumerateInstances(const OperationContext& context, const CIMObjectPath& classReference,
                            const Boolean includeQualifiers, const Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList,
                            InstanceResponseHandler& handler) override;

    void enumerateInstanceNames(const OperationContext& context,
                                const CIMObjectPath& classReference,
                                ObjectPathResponseHandler& handler) override;

    REFUSE(modifyInstance, "StorageHardwareID::modifyInstance");
    REFUSE(createInstance, "StorageHardwareID::createInstance");
    REFUSE(deleteInstance, "StorageHardwareID::deleteInstance");

private:
    // Builds and delivers one host.
    void _getStorageHardwareID(Uint32 initiatorId, InstanceResponseHandler& handler);

    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
