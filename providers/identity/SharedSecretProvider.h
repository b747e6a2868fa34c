#pragma once

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Announcements.h"

namespace Pegasus {

// "CIM_SharedSecret": the secret of one host or of one target.
class SharedSecretProvider : public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override;
    void terminate() override {}

    void getInstance(const OperationContext& context, const CIMObjectPath& instanceReference,
                     const Boolean includeQualifiers, const Boolean includeClassOrigin,
                     const CIMPropertyList& propertyList,
                     InstanceResponseHandler& handler) override;

    void modifyInstance(const OperationContext& context, const CIMObjectPath& instanceReference,
                        const CIMInstance& instanceObject, const Boolean includeQualifiers,
                        const CIMPropertyList& propertyList, ResponseHandler& handler) override;

    // Refused.

    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler&) override {
        refuse("SharedSecret::enumerateInstances");
    }

    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler&) override {
        refuse("SharedSecret::enumerateInstanceNames");
    }

    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {
        refuse("SharedSecret::createInstance");
    }

    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {
        refuse("SharedSecret::deleteInstance");
    }

private:
    // Builds and delivers the secret of an initiator or target; an empty one for any other object.
    void _getSharedSecret(Uint32 id, InstanceResponseHandler& handler);

    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
