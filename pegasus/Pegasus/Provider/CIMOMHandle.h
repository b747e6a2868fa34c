#pragma once

#include <memory>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/Linkage.h>

namespace Pegasus {

class CimomBackend;

// A provider's way to the server that hosts it. Pass the context of the present request.
//
// Errors are CIMExceptions with the code and the text of whoever answered; a handle without a
// server throws CIM_ERR_FAILED. Copies are the same handle. Threads: as the hosting server allows,
// which for ours is any number at once.
class PEGASUS_PROVIDER_LINKAGE CIMOMHandle {
public:
    CIMOMHandle();
    CIMOMHandle(const CIMOMHandle& handle);
    ~CIMOMHandle();
    CIMOMHandle& operator=(const CIMOMHandle& handle);

    CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                      const CIMName& className, Boolean localOnly, Boolean includeQualifiers,
                      Boolean includeClassOrigin, const CIMPropertyList& propertyList);
    Array<CIMClass> enumerateClasses(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace, const CIMName& className,
                                     Boolean deepInheritance, Boolean localOnly,
                                     Boolean includeQualifiers, Boolean includeClassOrigin);
    Array<CIMName> enumerateClassNames(const OperationContext& context,
                                       const CIMNamespaceName& nameSpace, const CIMName& className,
                                       Boolean deepInheritance);
    void createClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMClass& newClass);
    void modifyClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMClass& modifiedClass);
    void deleteClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMName& className);

    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                            const CIMObjectPath& instanceName, Boolean localOnly,
                            Boolean includeQualifiers, Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList);
    Array<CIMInstance> enumerateInstances(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance,
                                          Boolean localOnly, Boolean includeQualifiers,
                                          Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList);
    Array<CIMObjectPath> enumerateInstanceNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMName& className);
    CIMObjectPath createInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& newInstance);
    void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                        const CIMPropertyList& propertyList);
    void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMObjectPath& instanceName);

    Array<CIMObject> execQuery(const OperationContext& context, const CIMNamespaceName& nameSpace,
                               const String& queryLanguage, const String& query);

    Array<CIMObject> associators(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& objectName, const CIMName& assocClass,
                                 const CIMName& resultClass, const String& role,
                                 const String& resultRole, Boolean includeQualifiers,
                                 Boolean includeClassOrigin, const CIMPropertyList& propertyList);
    Array<CIMObjectPath> associatorNames(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole);
    Array<CIMObject> references(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& objectName, const CIMName& resultClass,
                                const String& role, Boolean includeQualifiers,
                                Boolean includeClassOrigin, const CIMPropertyList& propertyList);
    Array<CIMObjectPath> referenceNames(const OperationContext& context,
                                        const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role);

    CIMValue getProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                         const CIMObjectPath& instanceName, const CIMName& propertyName);
    void setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMObjectPath& instanceName, const CIMName& propertyName,
                     const CIMValue& newValue);
    CIMValue invokeMethod(const OperationContext& context, const CIMNamespaceName& nameSpace,
                          const CIMObjectPath& instanceName, const CIMName& methodName,
                          const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters);

    // Counted: the provider's module stays loaded until each is taken back. No error.
    void disallowProviderUnload();
    void allowProviderUnload();

private:
    friend CIMOMHandle makeCimomHandle(std::shared_ptr<CimomBackend> backend);
    CimomBackend& _server() const;

    std::shared_ptr<CimomBackend> _backend;
};

} // namespace Pegasus
