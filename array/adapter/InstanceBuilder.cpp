#include "array/adapter/InstanceBuilder.h"

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>

#include "array/adapter/CimNames.h"

namespace array {

using Pegasus::Array;
using Pegasus::CIMKeyBinding;
using Pegasus::CIMName;
using Pegasus::CIMObjectPath;
using Pegasus::CIMProperty;
using Pegasus::CIMPropertyList;
using Pegasus::CIMQualifier;
using Pegasus::CIMValue;
using Pegasus::Uint16;
using Pegasus::Uint32;

InstanceBuilder::InstanceBuilder(const CIMObjectPath& path, bool includeQualifiers,
                                 const CIMPropertyList& propertyList)
    : _instance(path.getClassName()), _includeQualifiers(includeQualifiers),
      _propertyList(propertyList) {
    _instance.setPath(path);
    const Array<CIMKeyBinding> keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (keys[i].getType() == CIMKeyBinding::STRING) {
            addKey(CIMProperty(keys[i].getName(), CIMValue(keys[i].getValue())));
        }
    }
}

InstanceBuilder& InstanceBuilder::reference(const CIMName& name, const CIMObjectPath& end) {
    addKey(CIMProperty(name, CIMValue(end), 0, end.getClassName(), _instance.getClassName()));
    return *this;
}

InstanceBuilder& InstanceBuilder::property(const CIMName& name, const CIMValue& value) {
    if (wanted(name)) {
        _instance.addProperty(CIMProperty(name, value));
    }
    return *this;
}

InstanceBuilder& InstanceBuilder::inService(Uint16 operationalStatus) {
    property(name::OperationalStatus, CIMValue(Array<Uint16>(1, operationalStatus)));
    return property(name::EnabledState, CIMValue(Uint16(2)));
}

void InstanceBuilder::addKey(CIMProperty key) {
    if (_includeQualifiers) {
        key.addQualifier(CIMQualifier(name::Key, CIMValue(true)));
    }
    _instance.addProperty(key);
}

bool InstanceBuilder::wanted(const CIMName& name) const {
    if (_propertyList.isNull()) {
        return true;
    }
    for (Uint32 i = 0; i < _propertyList.size(); ++i) {
        if (_propertyList[i] == name) {
            return true;
        }
    }
    return false;
}

} // namespace array
