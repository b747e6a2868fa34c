#pragma once

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Refusals.h"

namespace Pegasus {

// "CIM_ControllerConfigurationService": the service that exposes volumes to hosts and hides them.
class ControllerConfigurationServiceProvider : public CIMInstanceProvider,
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

    REFUSE_WITH_EVENT(modifyInstance, "ControllerConfigurationService", 210);
    REFUSE_WITH_EVENT(createInstance, "ControllerConfigurationService", 224);
    REFUSE_WITH_EVENT(deleteInstance, "ControllerConfigurationService", 237);

private:
    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
