#pragma once

#include <cstdint>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>

#include "array/model/LoginParameters.h"

namespace array {

// A moment of UTC from microseconds since 1970-01-01.
Pegasus::CIMDateTime dateTime(std::uint64_t microseconds);

// A counter as the schema types it: uint64 is another type than std::uint64_t on some platforms.
inline Pegasus::CIMValue counter(std::uint64_t value) {
    return Pegasus::CIMValue(static_cast<Pegasus::Uint64>(value));
}

// An instance in the making: it begins with a path, whose text keys are its first properties.
class InstanceBuilder {
public:
    InstanceBuilder(const Pegasus::CIMObjectPath& path, bool includeQualifiers,
                    const Pegasus::CIMPropertyList& propertyList);

    // One end of an association: a key, so always there.
    InstanceBuilder& reference(const Pegasus::CIMName& name, const Pegasus::CIMObjectPath& end);

    // Left out if the property list does not name it.
    InstanceBuilder& property(const Pegasus::CIMName& name, const Pegasus::CIMValue& value);

    // A property for each login parameter, as a target proposes it.
    InstanceBuilder& proposed(const SessionParameters& parameters);
    InstanceBuilder& proposed(const ConnectionParameters& parameters);

    // A property for each login parameter that a session or connection shows, as it was agreed.
    InstanceBuilder& agreed(const SessionParameters& parameters);
    InstanceBuilder& agreed(const ConnectionParameters& parameters);

    // "OperationalStatus" of one value, and "EnabledState" 2 (Enabled).
    InstanceBuilder& inService(Pegasus::Uint16 operationalStatus = 2);

    const Pegasus::CIMInstance& instance() const { return _instance; }

private:
    void addKey(Pegasus::CIMProperty key);
    bool wanted(const Pegasus::CIMName& name) const;

    Pegasus::CIMInstance _instance;
    const bool _includeQualifiers;
    const Pegasus::CIMPropertyList _propertyList;
};

} // namespace array
