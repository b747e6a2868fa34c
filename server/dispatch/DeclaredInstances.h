// The instances that the MOF itself has.
#pragma once

#include <map>
#include <vector>

#include <Pegasus/Provider/CIMInstanceProvider.h>

#include "server/schema/Schema.h"

namespace smisd {

// Serves, read-only, the instances of the repository, for classes that no provider is registered
// for. A key property SystemName that an instance leaves out is the name of the host.
//
// Immutable, so free for any thread.
class DeclaredInstances : public Pegasus::CIMInstanceProvider {
public:
    DeclaredInstances(const Repository& repository, const Pegasus::String& hostName);

    // By which it is asked for; no registered provider has it.
    static const Pegasus::String& name();

    // Whether there are instances of exactly this class.
    bool has(const Pegasus::CIMNamespaceName& nameSpace, const Pegasus::CIMName& className) const;

    void initialize(Pegasus::CIMOMHandle&) override {}
    void terminate() override {}

    // The path of a request's context has the namespace. CIM_ERR_NOT_FOUND for an unknown instance.
    void getInstance(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& instanceReference, Pegasus::Boolean,
                     Pegasus::Boolean, const Pegasus::CIMPropertyList&,
                     Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstances(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& classReference, Pegasus::Boolean,
                            Pegasus::Boolean, const Pegasus::CIMPropertyList&,
                            Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMObjectPath& classReference,
                                Pegasus::ObjectPathResponseHandler& handler) override;

    // CIM_ERR_NOT_SUPPORTED.
    void modifyInstance(const Pegasus::OperationContext&, const Pegasus::CIMObjectPath&,
                        const Pegasus::CIMInstance&, Pegasus::Boolean,
                        const Pegasus::CIMPropertyList&, Pegasus::ResponseHandler&) override;
    void createInstance(const Pegasus::OperationContext&, const Pegasus::CIMObjectPath&,
                        const Pegasus::CIMInstance&, Pegasus::ObjectPathResponseHandler&) override;
    void deleteInstance(const Pegasus::OperationContext&, const Pegasus::CIMObjectPath&,
                        Pegasus::ResponseHandler&) override;

private:
    using Instances = std::vector<Pegasus::CIMInstance>; // with their paths, without host
    using OfClass = std::map<Pegasus::CIMName, Instances, NameOrder>;

    const Instances& of(const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMName& className) const;

    std::map<Pegasus::CIMNamespaceName, OfClass, NameOrder> _instances;
};

} // namespace smisd
