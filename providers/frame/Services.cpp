#include "providers/frame/Services.h"

#include <Pegasus/Common/Array.h>

#include "engine/CurrentName.h"
#include "engine/DRAVEngine.h"
#include "engine/NameConstants.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Requests.h"

namespace Pegasus {

namespace {

Array<CIMKeyBinding> serviceKeys(const CIMName& className) {
    // Wanted: see docs/contract.md, A service named like the array.
    const String& systemName = currentName(DRAVEngine::_OvrinSystemNamePtr);
    Array<CIMKeyBinding> keys;
    keys.append(stringKey(PROPERTY_SystemCreationClassName, "CIM_ComputerSystem"));
    keys.append(stringKey(PROPERTY_SystemName, systemName));
    keys.append(stringKey(PROPERTY_CreationClassName, className.getString()));
    keys.append(stringKey(PROPERTY_Name, systemName));
    return keys;
}

} // namespace

CIMObjectPath servicePath(const CIMName& className) {
    return modulePath(className, serviceKeys(className));
}

CIMInstance serviceInstance(const CIMName& className) {
    CIMInstance instance(className);
    const Array<CIMKeyBinding> keys = serviceKeys(className);
    for (const CIMKeyBinding& key : keys) {
        instance.addProperty(keyProperty(key.getName(), key.getValue()));
    }
    instance.setPath(modulePath(className, keys));
    return instance;
}

} // namespace Pegasus
