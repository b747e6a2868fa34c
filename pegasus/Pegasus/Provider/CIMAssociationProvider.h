#pragma once

#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Provider/CIMProvider.h>

namespace Pegasus {

// A provider of an association: who is linked to an object, and by what. A null class and an
// empty role are no restriction.
class PEGASUS_PROVIDER_LINKAGE CIMAssociationProvider : public virtual CIMProvider {
public:
    CIMAssociationProvider();
    ~CIMAssociationProvider() override;

    virtual void associators(const OperationContext& context, const CIMObjectPath& objectName,
                             const CIMName& associationClass, const CIMName& resultClass,
                             const String& role, const String& resultRole,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList,
                             ObjectResponseHandler& handler) = 0;
    virtual void associatorNames(const OperationContext& context, const CIMObjectPath& objectName,
                                 const CIMName& associationClass, const CIMName& resultClass,
                                 const String& role, const String& resultRole,
                                 ObjectPathResponseHandler& handler) = 0;
    virtual void references(const OperationContext& context, const CIMObjectPath& objectName,
                            const CIMName& resultClass, const String& role,
                            const Boolean includeQualifiers, const Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList,
                            ObjectResponseHandler& handler) = 0;
    virtual void referenceNames(const OperationContext& context, const CIMObjectPath& objectName,
                                const CIMName& resultClass, const String& role,
                                ObjectPathResponseHandler& handler) = 0;
};

} // namespace Pegasus
