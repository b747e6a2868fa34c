#pragma once

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Refusals.h"

namespace Pegasus {

// "CIM_AuthorizedSubject" and "CIM_AuthorizedTarget": which hosts may reach which targets, through
// one privilege per host.
class AuthorizedAccessProvider : public CIMAssociationProvider, public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override;
    void terminate() override {}

    void associators(const OperationContext& context, const CIMObjectPath& objectName,
                     const CIMName& associationClass, const CIMName& resultClass,
                     const String& role, const String& resultRole, const Boolean includeQualifiers,
                     const Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                     ObjectResponseHandler& handler) override;

    void associatorNames(const OperationContext& context, const CIMObjectPath& objectName,
                         const CIMName& associationClass, const CIMName& resultClass,
                         const String& role, const String& resultRole,
                         ObjectPathResponseHandler& handler) override;

    REFUSE(references, "AuthorizedAccess::references");
    REFUSE(referenceNames, "AuthorizedAccess::referenceNames");
    REFUSE_WITH_LINE(getInstance, "AuthorizedAccess::getInstance",
                     "===> In AuthorizedAccessProvider::getInstance");
    REFUSE(enumerateInstances, "AuthorizedAccess::enumerateInstances");
    REFUSE(enumerateInstanceNames, "AuthorizedAccess::enumerateInstanceNames");
    REFUSE(modifyInstance, "AuthorizedAccess::modifyInstance");
    REFUSE(createInstance, "AuthorizedAccess::createInstance");
    REFUSE(deleteInstance, "AuthorizedAccess::deleteInstance");

private:
    void _deliverAuthorizedPrivilege(Uint32 initiatorId, ObjectResponseHandler& handler);
    void _deliverAuthorizedPrivilegePath(Uint32 initiatorId, ObjectPathResponseHandler& handler);

    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
