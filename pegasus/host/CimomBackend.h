// The server's side of CIMOMHandle.

#pragma once

#include <memory>

#include <Pegasus/Provider/CIMOMHandle.h>

namespace Pegasus {

// What a handle's calls do; a hosting server overrides what it serves. The arguments and the
// errors are those of CIMOMHandle. Every other operation throws CIMNotSupportedException with the
// name of the call, as "CIMOMHandle::execQuery".
//
// Threads: providers call from any thread, several at once.
class PEGASUS_EXPORT CimomBackend {
public:
    CimomBackend();
    virtual ~CimomBackend();
    CimomBackend(const CimomBackend&) = delete;
    CimomBackend& operator=(const CimomBackend&) = delete;

    virtual CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMName& className, bool localOnly, bool includeQualifiers,
                              bool includeClassOrigin, const CIMPropertyList& propertyList);
    virtual Array<CIMClass> enumerateClasses(const OperationContext& context,
                                             const CIMNamespaceName& nameSpace,
                                             const CIMName& className, bool deepInheritance,
                                             bool localOnly, bool includeQualifiers,
                                             bool includeClassOrigin);
    virtual Array<CIMName> enumerateClassNames(const OperationContext& context,
                                               const CIMNamespaceName& nameSpace,
                                               const CIMName& className, bool deepInheritance);
    virtual void createClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                             const CIMClass& newClass);
    virtual void modifyClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                             const CIMClass& modifiedClass);
    virtual void deleteClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                             const CIMName& className);

    virtual CIMInstance getInstance(const OperationContext& context,
                                    const CIMNamespaceName& nameSpace,
                                    const CIMObjectPath& instanceName, bool localOnly,
                                    bool includeQualifiers, bool includeClassOrigin,
                                    const CIMPropertyList& propertyList);
    virtual Array<CIMInstance> enumerateInstances(const OperationContext& context,
                                                  const CIMNamespaceName& nameSpace,
                                                  const CIMName& className, bool deepInheritance,
                                                  bool localOnly, bool includeQualifiers,
                                                  bool includeClassOrigin,
                                                  const CIMPropertyList& propertyList);
    virtual Array<CIMObjectPath> enumerateInstanceNames(const OperationContext& context,
                                                        const CIMNamespaceName& nameSpace,
                                                        const CIMName& className);
    virtual CIMObjectPath createInstance(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMInstance& newInstance);
    virtual void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMInstance& modifiedInstance, bool includeQualifiers,
                                const CIMPropertyList& propertyList);
    virtual void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& instanceName);

    virtual Array<CIMObject> execQuery(const OperationContext& context,
                                       const CIMNamespaceName& nameSpace,
                                       const String& queryLanguage, const String& query);

    virtual Array<CIMObject> associators(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole, bool includeQualifiers,
                                         bool includeClassOrigin,
                                         const CIMPropertyList& propertyList);
    virtual Array<CIMObjectPath>
    associatorNames(const OperationContext& context, const CIMNamespaceName& nameSpace,
                    const CIMObjectPath& objectName, const CIMName& assocClass,
                    const CIMName& resultClass, const String& role, const String& resultRole);
    virtual Array<CIMObject> references(const OperationContext& context,
                                        const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role, bool includeQualifiers,
                                        bool includeClassOrigin,
                                        const CIMPropertyList& propertyList);
    virtual Array<CIMObjectPath> referenceNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMObjectPath& objectName,
                                                const CIMName& resultClass, const String& role);

    virtual CIMValue getProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName, const CIMName& propertyName);
    virtual void setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                             const CIMObjectPath& instanceName, const CIMName& propertyName,
                             const CIMValue& newValue);
    virtual CIMValue invokeMethod(const OperationContext& context,
                                  const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& methodName,
                                  const Array<CIMParamValue>& inParameters,
                                  Array<CIMParamValue>& outParameters);

    // These do nothing unless overridden.
    virtual void disallowProviderUnload();
    virtual void allowProviderUnload();
};

// A handle whose calls go to `backend`, which lives as long as a copy of the handle does.
PEGASUS_EXPORT CIMOMHandle makeCimomHandle(std::shared_ptr<CimomBackend> backend);

} // namespace Pegasus
