// Which provider serves which class.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

#include "server/schema/Schema.h"

namespace smisd {

// What a provider does for a class: the numbers of PG_ProviderCapabilities.ProviderType that this
// server has a use for.
enum class ProviderType { instance = 2, association = 3, method = 5 };

// A registration that cannot be; what() names the instance that is wrong and what about it.
class RegistrationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The provider registration of one module: one PG_ProviderModule, and its PG_Provider and
// PG_ProviderCapabilities instances.
//
// Immutable after construction, so free for any thread.
class Registration {
public:
    // Instances of other classes are passed over. Throws RegistrationError.
    explicit Registration(const std::vector<Pegasus::CIMInstance>& instances);

    const Pegasus::String& moduleName() const { return _moduleName; }
    const std::vector<Pegasus::String>& providerNames() const { return _providerNames; }

    // The name of the provider, or null. No provider serves a class by its superclass.
    const Pegasus::String* find(const Pegasus::CIMNamespaceName& nameSpace,
                                const Pegasus::CIMName& className, ProviderType type) const;

private:
    struct Served {
        Pegasus::CIMNamespaceName nameSpace;
        Pegasus::CIMName className;
        ProviderType type;
    };
    struct ServedOrder {
        bool operator()(const Served& left, const Served& right) const;
    };

    void addModule(const Pegasus::CIMInstance& instance);
    void addProvider(const Pegasus::CIMInstance& instance);
    void addCapabilities(const Pegasus::CIMInstance& instance);
    void requireModule(const Pegasus::CIMInstance& instance) const;

    Pegasus::String _moduleName;
    std::vector<Pegasus::String> _providerNames;
    std::map<Served, Pegasus::String, ServedOrder> _served;
};

} // namespace smisd
