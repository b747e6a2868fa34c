#pragma once

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"
#include "providers/frame/Announcements.h"

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

    // Refused.

    void references(const OperationContext&, const CIMObjectPath&, const CIMName&, const String&,
                    const Boolean, const Boolean, const CIMPropertyList&,
                    ObjectResponseHandler&) override {
        refuse("AuthorizedAccess::references");
    }

    void referenceNames(const OperationContext&, const CIMObjectPath&, const CIMName&,
                        const String&, ObjectPathResponseHandler&) override {
        refuse("AuthorizedAccess::referenceNames");
    }

    void getInstance(const OperationContext&, const CIMObjectPath&, const Boolean, const Boolean,
                     const CIMPropertyList&, InstanceResponseHandler&) override {
        // Wanted: see docs/contract.md, Refusals.
        trace("===> In AuthorizedAccessProvider::getInstance");
        refuse("AuthorizedAccess::getInstance");
    }

    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler&) override {
        refuse("AuthorizedAccess::enumerateInstances");
    }

    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler&) override {
        refuse("AuthorizedAccess::enumerateInstanceNames");
    }

    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {
        refuse("AuthorizedAccess::modifyInstance");
    }

    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {
        refuse("AuthorizedAccess::createInstance");
    }

    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {
        refuse("AuthorizedAccess::deleteInstance");
    }

private:
    void _deliverAuthorizedPrivilege(Uint32 initiatorId, ObjectResponseHandler& handler);
    void _deliverAuthorizedPrivilegePath(Uint32 initiatorId, ObjectPathResponseHandler& handler);

    DRAVEngine* _engine = nullptr;
    CIMOMHandle _cimom;
};

} // namespace Pegasus
