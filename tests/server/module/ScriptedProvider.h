// A provider of every kind that does what the requests ask for.
#pragma once

#include <mutex>
#include <string>

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

namespace scripted {

// Every instance that it delivers has "Id" and "Seen": the arguments of the call. The instance
// "last" has what the last modifyInstance, createInstance or deleteInstance was called with.
//
// getInstance, by Id: "none" completes without an instance, "forget" delivers and does not
// complete, "twice", "uninitialized", "late:TEXT" throws after complete, "user" has the user's name
// as "Seen", "up:ID" calls back for the instance ID and delivers it.
//
// Enumerations, by class: Test_Refusing throws NOT_SUPPORTED, Test_Failing FAILED after one
// instance, Test_Many has 250 instances, Test_Pathless delivers without a path; others deliver one.
//
// Associations, by the association's class: Test_RefusingLink throws NOT_SUPPORTED; others deliver
// with a bare path, with a namespace, and with host and namespace.
class ScriptedProvider : public Pegasus::CIMInstanceProvider,
                         public Pegasus::CIMAssociationProvider,
                         public Pegasus::CIMMethodProvider {
public:
    void initialize(Pegasus::CIMOMHandle& cimom) override;
    void terminate() override;

    void getInstance(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& instanceReference,
                     const Pegasus::Boolean includeQualifiers,
                     const Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstances(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& classReference,
                            const Pegasus::Boolean includeQualifiers,
                            const Pegasus::Boolean includeClassOrigin,
                            const Pegasus::CIMPropertyList& propertyList,
                            Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMObjectPath& classReference,
                                Pegasus::ObjectPathResponseHandler& handler) override;
    void modifyInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instanceReference,
                        const Pegasus::CIMInstance& instanceObject,
                        const Pegasus::Boolean includeQualifiers,
                        const Pegasus::CIMPropertyList& propertyList,
                        Pegasus::ResponseHandler& handler) override;
    void createInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instanceReference,
                        const Pegasus::CIMInstance& instanceObject,
                        Pegasus::ObjectPathResponseHandler& handler) override;
    void deleteInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instanceReference,
                        Pegasus::ResponseHandler& handler) override;

    void associators(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& objectName,
                     const Pegasus::CIMName& associationClass, const Pegasus::CIMName& resultClass,
                     const Pegasus::String& role, const Pegasus::String& resultRole,
                     const Pegasus::Boolean includeQualifiers,
                     const Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::ObjectResponseHandler& handler) override;
    void associatorNames(const Pegasus::OperationContext& context,
                         const Pegasus::CIMObjectPath& objectName,
                         const Pegasus::CIMName& associationClass,
                         const Pegasus::CIMName& resultClass, const Pegasus::String& role,
                         const Pegasus::String& resultRole,
                         Pegasus::ObjectPathResponseHandler& handler) override;
    void references(const Pegasus::OperationContext& context,
                    const Pegasus::CIMObjectPath& objectName, const Pegasus::CIMName& resultClass,
                    const Pegasus::String& role, const Pegasus::Boolean includeQualifiers,
                    const Pegasus::Boolean includeClassOrigin,
                    const Pegasus::CIMPropertyList& propertyList,
                    Pegasus::ObjectResponseHandler& handler) override;
    void referenceNames(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& objectName,
                        const Pegasus::CIMName& resultClass, const Pegasus::String& role,
                        Pegasus::ObjectPathResponseHandler& handler) override;

    // "Echo" gives 0 and each parameter back, and one named "path" with the object's path; "Two"
    // gives 1, a parameter, and 2; "Null" a null; "None" nothing; any other method is not found.
    void invokeMethod(const Pegasus::OperationContext& context,
                      const Pegasus::CIMObjectPath& objectReference,
                      const Pegasus::CIMName& methodName,
                      const Pegasus::Array<Pegasus::CIMParamValue>& inParameters,
                      Pegasus::MethodResultResponseHandler& handler) override;

private:
    void remember(const std::string& call);
    std::string remembered();

    Pegasus::CIMOMHandle _cimom;
    std::mutex _mutex;
    std::string _last; // guarded by _mutex
};

} // namespace scripted
