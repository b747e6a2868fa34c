#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Provider/CIMProvider.h>

namespace Pegasus {

// A provider of the instances of a class.
class PEGASUS_PROVIDER_LINKAGE CIMInstanceProvider : public virtual CIMProvider {
public:
    CIMInstanceProvider();
    ~CIMInstanceProvider() override;

    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList,
                             InstanceResponseHandler& handler) = 0;
    virtual void
    enumerateInstances(const OperationContext& context, const CIMObjectPath& classReference,
                       const Boolean includeQualifiers, const Boolean includeClassOrigin,
                       const CIMPropertyList& propertyList, InstanceResponseHandler& handler) = 0;
    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler) = 0;
    virtual void modifyInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject, const Boolean includeQualifiers,
                                const CIMPropertyList& propertyList, ResponseHandler& handler) = 0;
    virtual void createInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject,
                                ObjectPathResponseHandler& handler) = 0;
    virtual void deleteInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                ResponseHandler& handler) = 0;
};

} // namespace Pegasus
