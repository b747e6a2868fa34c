#pragma once

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Announcements.h"

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

    // Refused, with an event. Wanted: see docs/contract.md, Line numbers of events.

    void modifyInstance(const OperationContext&, const CIMObjectPath& path, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {
        refuseWithEvent("ControllerConfigurationService", "modifyInstance", 210, path);
    }

    void createInstance(const OperationContext&, const CIMObjectPath& path, const CIMInstance&,
                        ObjectPathResponseHandler&) override {
        refuseWithEvent("ControllerConfigurationService", "createInstance", 224, path);
    }

    void deleteInstance(const OperationContext&, const CIMObjectPath& path,
                        ResponseHandler&) override {
        refuseWithEvent("ControllerConfigurationService", "deleteInstance", 237, path);
    }

private:
    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
