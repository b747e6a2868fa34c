#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>

namespace array {

// An instance in the making: it begins with a path, whose text keys are its first properties.
class InstanceBuilder {
public:
    InstanceBuilder(const Pegasus::CIMObjectPath& path, bool includeQualifiers,
                    const Pegasus::CIMPropertyList& propertyList);

    // One end of an association: a key, so always there.
    InstanceBuilder& reference(const Pegasus::CIMName& name, const Pegasus::CIMObjectPath& end);

    // Left out if the property list does not name it.
    InstanceBuilder& property(const Pegasus::CIMName& name, const Pegasus::CIMValue& value);

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
