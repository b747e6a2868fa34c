#pragma once

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Refusals.h"

namespace Pegasus {

// "CIM_StorageHardwareIDManagementService": the service that registers hosts and removes them.
class StorageHardwareIDManagementServiceProvider : public CIMInstanceProvider,
                                                   public CIMMethodProvider {
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

    void invokeMethod(const OperationContext& context, const CIMObjectPath& objectReference,
                      const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                      MethodResultResponseHandler& handler) override;

    REFUSE_WITH_EVENT(modifyInstance, "StorageHardwareIDManagementService", 183);
    REFUSE_WITH_EVENT(createInstance, "StorageHardwareIDManagementService", 197);
    REFUSE_WITH_EVENT(deleteInstance, "StorageHardwareIDManagementService", 210);

private:
    CIMInstance _build_instance() const;
    CIMObjectPath _fill_reference() const;

    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
