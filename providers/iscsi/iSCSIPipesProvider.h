#pragma once

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Refusals.h"

namespace Pegasus {

// The live iSCSI sessions and connections, and what ties them to endpoints and to each other.
class iSCSIPipesProvider : public CIMInstanceProvider, public CIMAssociationProvider {
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

    void associators(const OperationContext& context, const CIMObjectPath& objectName,
                     const CIMName& associationClass, const CIMName& resultClass,
                     const String& role, const String& resultRole, const Boolean includeQualifiers,
                     const Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                     ObjectResponseHandler& handler) override;

    void associatorNames(const OperationContext& context, const CIMObjectPath& objectName,
                         const CIMName& associationClass, const CIMName& resultClass,
                         const String& role, const String& resultRole,
                         ObjectPathResponseHandler& handler) override;

    void references(const OperationContext& context, const CIMObjectPath& objectName,
                    const CIMName& resultClass, const String& role, const Boolean includeQualifiers,
                    const Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                    ObjectResponseHandler& handler) override;

    void referenceNames(const OperationContext& context, const CIMObjectPath& objectName,
                        const CIMName& resultClass, const String& role,
                        ObjectPathResponseHandler& handler) override;

    REFUSE_WITH_LINE(modifyInstance, "iSCSIPipes::modifyInstance",
                     "iSCSISettingsProvider::modifyInstance");
    REFUSE(createInstance, "iSCSISettings::createInstance");
    REFUSE(deleteInstance, "iSCSISettings::deleteInstance");

private:
    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
