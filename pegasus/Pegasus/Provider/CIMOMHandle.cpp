#include <utility>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "pegasus/host/CimomBackend.h"

namespace Pegasus {

CIMOMHandle::CIMOMHandle() = default;
CIMOMHandle::CIMOMHandle(const CIMOMHandle& handle) = default;
CIMOMHandle::~CIMOMHandle() = default;
CIMOMHandle& CIMOMHandle::operator=(const CIMOMHandle& handle) = default;

CIMOMHandle makeCimomHandle(std::shared_ptr<CimomBackend> backend) {
    CIMOMHandle handle;
    handle._backend = std::move(backend);
    return handle;
}

CimomBackend& CIMOMHandle::_server() const {
    if (!_backend) {
        throw CIMException(CIM_ERR_FAILED, "This CIMOMHandle has no server behind it: use the one "
                                           "that the provider got in initialize()");
    }
    return *_backend;
}

void CIMOMHandle::disallowProviderUnload() {
    if (_backend) {
        _backend->disallowProviderUnload();
    }
}

void CIMOMHandle::allowProviderUnload() {
    if (_backend) {
        _backend->allowProviderUnload();
    }
}

CIMClass CIMOMHandle::getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                               const CIMName& className, Boolean localOnly,
                               Boolean includeQualifiers, Boolean includeClassOrigin,
                               const CIMPropertyList& propertyList) {
    return _server().getClass(context, nameSpace, className, localOnly, includeQualifiers,
                              includeClassOrigin, propertyList);
}

Array<CIMClass> CIMOMHandle::enumerateClasses(const OperationContext& context,
                                              const CIMNamespaceName& nameSpace,
                                              const CIMName& className, Boolean deepInheritance,
                                              Boolean localOnly, Boolean includeQualifiers,
                                              Boolean includeClassOrigin) {
    return _server().enumerateClasses(context, nameSpace, className, deepInheritance, localOnly,
                                      includeQualifiers, includeClassOrigin);
}

Array<CIMName> CIMOMHandle::enumerateClassNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMName& className, Boolean deepInheritance) {
    return _server().enumerateClassNames(context, nameSpace, className, deepInheritance);
}

void CIMOMHandle::createClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMClass& newClass) {
    return _server().createClass(context, nameSpace, newClass);
}

void CIMOMHandle::modifyClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMClass& modifiedClass) {
    return _server().modifyClass(context, nameSpace, modifiedClass);
}

void CIMOMHandle::deleteClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMName& className) {
    return _server().deleteClass(context, nameSpace, className);
}

CIMInstance CIMOMHandle::getInstance(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace,
                                     const CIMObjectPath& instanceName, Boolean localOnly,
                                     Boolean includeQualifiers, Boolean includeClassOrigin,
                                     const CIMPropertyList& propertyList) {
    return _server().getInstance(context, nameSpace, instanceName, localOnly, includeQualifiers,
                                 includeClassOrigin, propertyList);
}

Array<CIMInstance>
CIMOMHandle::enumerateInstances(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMName& className, Boolean deepInheritance,
                                Boolean localOnly, Boolean includeQualifiers,
                                Boolean includeClassOrigin, const CIMPropertyList& propertyList) {
    return _server().enumerateInstances(context, nameSpace, className, deepInheritance, localOnly,
                                        includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMObjectPath> CIMOMHandle::enumerateInstanceNames(const OperationContext& context,
                                                         const CIMNamespaceName& nameSpace,
                                                         const CIMName& className) {
    return _server().enumerateInstanceNames(context, nameSpace, className);
}

CIMObjectPath CIMOMHandle::createInstance(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMInstance& newInstance) {
    return _server().createInstance(context, nameSpace, newInstance);
}

void CIMOMHandle::modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                 const CIMPropertyList& propertyList) {
    return _server().modifyInstance(context, nameSpace, modifiedInstance, includeQualifiers,
                                    propertyList);
}

void CIMOMHandle::deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName) {
    return _server().deleteInstance(context, nameSpace, instanceName);
}

Array<CIMObject> CIMOMHandle::execQuery(const OperationContext& context,
                                        const CIMNamespaceName& nameSpace,
                                        const String& queryLanguage, const String& query) {
    return _server().execQuery(context, nameSpace, queryLanguage, query);
}

Array<CIMObject> CIMOMHandle::associators(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMObjectPath& objectName,
                                          const CIMName& assocClass, const CIMName& resultClass,
                                          const String& role, const String& resultRole,
                                          Boolean includeQualifiers, Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList) {
    return _server().associators(context, nameSpace, objectName, assocClass, resultClass, role,
                                 resultRole, includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMObjectPath> CIMOMHandle::associatorNames(const OperationContext& context,
                                                  const CIMNamespaceName& nameSpace,
                                                  const CIMObjectPath& objectName,
                                                  const CIMName& assocClass,
                                                  const CIMName& resultClass, const String& role,
                                                  const String& resultRole) {
    return _server().associatorNames(context, nameSpace, objectName, assocClass, resultClass, role,
                                     resultRole);
}

Array<CIMObject> CIMOMHandle::references(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName,
                                         const CIMName& resultClass, const String& role,
                                         Boolean includeQualifiers, Boolean includeClassOrigin,
                                         const CIMPropertyList& propertyList) {
    return _server().references(context, nameSpace, objectName, resultClass, role,
                                includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMObjectPath> CIMOMHandle::referenceNames(const OperationContext& context,
                                                 const CIMNamespaceName& nameSpace,
                                                 const CIMObjectPath& objectName,
                                                 const CIMName& resultClass, const String& role) {
    return _server().referenceNames(context, nameSpace, objectName, resultClass, role);
}

CIMValue CIMOMHandle::getProperty(const OperationContext& context,
                                  const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& propertyName) {
    return _server().getProperty(context, nameSpace, instanceName, propertyName);
}

void CIMOMHandle::setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMObjectPath& instanceName, const CIMName& propertyName,
                              const CIMValue& newValue) {
    return _server().setProperty(context, nameSpace, instanceName, propertyName, newValue);
}

CIMValue CIMOMHandle::invokeMethod(const OperationContext& context,
                                   const CIMNamespaceName& nameSpace,
                                   const CIMObjectPath& instanceName, const CIMName& methodName,
                                   const Array<CIMParamValue>& inParameters,
                                   Array<CIMParamValue>& outParameters) {
    return _server().invokeMethod(context, nameSpace, instanceName, methodName, inParameters,
                                  outParameters);
}

} // namespace Pegasus
