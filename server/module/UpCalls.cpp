#include "server/module/UpCalls.h"

#include <memory>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>

#include "pegasus/host/CimomBackend.h"

using namespace Pegasus;

namespace smisd {
namespace {

// Keeps the results of one operation, as they are.
class Collector : public ResultSink {
public:
    void instance(const CIMInstance& instance) override { instances.append(instance); }
    void namedInstance(const CIMInstance& instance) override { instances.append(instance); }
    void instanceName(const CIMObjectPath& path) override { paths.append(path); }
    void objectWithPath(const CIMObject& object) override { objects.append(object); }
    void objectPath(const CIMObjectPath& path) override { paths.append(path); }
    void returnValue(const CIMValue& result) override { value = result; }
    void outParameter(const CIMParamValue& parameter) override { parameters.append(parameter); }
    void classDeclaration(const CIMClass& declaration) override { classes.append(declaration); }
    void className(const CIMName& name) override { names.append(name); }

    Array<CIMInstance> instances;
    Array<CIMObjectPath> paths;
    Array<CIMObject> objects;
    CIMValue value;
    Array<CIMParamValue> parameters;
    Array<CIMClass> classes;
    Array<CIMName> names;
};

// The only result, or an uninitialized one if a provider left it out.
template<class Object>
Object only(const Array<Object>& objects) {
    return objects.size() == 0 ? Object() : objects[0];
}

String userOf(const OperationContext& context) {
    try {
        return IdentityContainer(context.get(IdentityContainer::NAME)).getUserName();
    } catch (const Exception&) { // the provider passed a context of its own
        return String();
    }
}

// Class and keys alone, as operations have them.
CIMObjectPath bare(const CIMObjectPath& path) {
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
}

class UpCalls : public CimomBackend {
public:
    explicit UpCalls(Dispatcher& dispatcher) : _dispatcher(dispatcher) {}

    CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                      const CIMName& className, bool localOnly, bool includeQualifiers,
                      bool includeClassOrigin, const CIMPropertyList& propertyList) override {
        return only(call(context, GetClass{nameSpace, className, localOnly, includeQualifiers,
                                           includeClassOrigin, propertyList})
                        .classes);
    }

    Array<CIMClass> enumerateClasses(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace, const CIMName& className,
                                     bool deepInheritance, bool localOnly, bool includeQualifiers,
                                     bool includeClassOrigin) override {
        return call(context, EnumerateClasses{nameSpace, className, deepInheritance, localOnly,
                                              includeQualifiers, includeClassOrigin})
            .classes;
    }

    Array<CIMName> enumerateClassNames(const OperationContext& context,
                                       const CIMNamespaceName& nameSpace, const CIMName& className,
                                       bool deepInheritance) override {
        return call(context, EnumerateClassNames{nameSpace, className, deepInheritance}).names;
    }

    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                            const CIMObjectPath& instanceName, bool localOnly,
                            bool includeQualifiers, bool includeClassOrigin,
                            const CIMPropertyList& propertyList) override {
        return only(call(context, GetInstance{nameSpace, bare(instanceName), localOnly,
                                              includeQualifiers, includeClassOrigin, propertyList})
                        .instances);
    }

    Array<CIMInstance> enumerateInstances(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMName& className, bool deepInheritance,
                                          bool localOnly, bool includeQualifiers,
                                          bool includeClassOrigin,
                                          const CIMPropertyList& propertyList) override {
        return call(context,
                    EnumerateInstances{nameSpace, className, deepInheritance, localOnly,
                                       includeQualifiers, includeClassOrigin, propertyList})
            .instances;
    }

    Array<CIMObjectPath> enumerateInstanceNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMName& className) override {
        return call(context, EnumerateInstanceNames{nameSpace, className}).paths;
    }

    CIMObjectPath createInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& newInstance) override {
        return only(call(context, CreateInstance{nameSpace, newInstance}).paths);
    }

    void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMInstance& modifiedInstance, bool includeQualifiers,
                        const CIMPropertyList& propertyList) override {
        call(context, ModifyInstance{nameSpace, modifiedInstance, includeQualifiers, propertyList});
    }

    void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMObjectPath& instanceName) override {
        call(context, DeleteInstance{nameSpace, bare(instanceName)});
    }

    Array<CIMObject> associators(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& objectName, const CIMName& assocClass,
                                 const CIMName& resultClass, const String& role,
                                 const String& resultRole, bool includeQualifiers,
                                 bool includeClassOrigin,
                                 const CIMPropertyList& propertyList) override {
        return call(context,
                    Associators{nameSpace, bare(objectName), false, assocClass, resultClass, role,
                                resultRole, includeQualifiers, includeClassOrigin, propertyList})
            .objects;
    }

    Array<CIMObjectPath> associatorNames(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole) override {
        return call(context, AssociatorNames{nameSpace, bare(objectName), false, assocClass,
                                             resultClass, role, resultRole})
            .paths;
    }

    Array<CIMObject> references(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& objectName, const CIMName& resultClass,
                                const String& role, bool includeQualifiers, bool includeClassOrigin,
                                const CIMPropertyList& propertyList) override {
        return call(context, References{nameSpace, bare(objectName), false, resultClass, role,
                                        includeQualifiers, includeClassOrigin, propertyList})
            .objects;
    }

    Array<CIMObjectPath> referenceNames(const OperationContext& context,
                                        const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role) override {
        return call(context, ReferenceNames{nameSpace, bare(objectName), false, resultClass, role})
            .paths;
    }

    CIMValue getProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                         const CIMObjectPath& instanceName, const CIMName& propertyName) override {
        return call(context, GetProperty{nameSpace, bare(instanceName), propertyName}).value;
    }

    void setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMObjectPath& instanceName, const CIMName& propertyName,
                     const CIMValue& newValue) override {
        call(context, SetProperty{nameSpace, bare(instanceName), propertyName, newValue});
    }

    CIMValue invokeMethod(const OperationContext& context, const CIMNamespaceName& nameSpace,
                          const CIMObjectPath& instanceName, const CIMName& methodName,
                          const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters) override {
        const Collector results =
            call(context, InvokeMethod{nameSpace, bare(instanceName), methodName, inParameters});
        outParameters.appendArray(results.parameters);
        return results.value;
    }

private:
    Collector call(const OperationContext& context, const Operation& operation) {
        Collector results;
        _dispatcher.dispatch(operation, RequestContext{userOf(context), String(), String()},
                             results);
        return results;
    }

    Dispatcher& _dispatcher;
};

} // namespace

CIMOMHandle makeUpCallHandle(Dispatcher& dispatcher) {
    return makeCimomHandle(std::make_shared<UpCalls>(dispatcher));
}

} // namespace smisd
