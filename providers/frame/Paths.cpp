#include "providers/frame/Paths.h"

#include <utility>

#include "engine/CurrentName.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVKeys.h"
#include "engine/NameConstants.h"

namespace Pegasus {

CIMObjectPath modulePath(const CIMName& className, Array<CIMKeyBinding> keys) {
    return CIMObjectPath(currentName(DRAVEngine::_OvrinHostNamePtr), SNIA_NAMESPACE, className,
                         std::move(keys));
}

CIMObjectPath modulePath(const CIMName& className, const CIMName& keyName, Uint32 id) {
    Array<CIMKeyBinding> keys;
    keys.append(stringKey(keyName, DRAVObjectKey(id)));
    return modulePath(className, std::move(keys));
}

CIMKeyBinding stringKey(const CIMName& name, String value) {
    return CIMKeyBinding(name, std::move(value), CIMKeyBinding::STRING);
}

CIMQualifier keyQualifier() {
    static const CIMName name("Key");
    return CIMQualifier(name, CIMValue(true), CIMFlavor::NONE, false);
}

CIMProperty keyProperty(const CIMName& name, CIMValue value) {
    CIMProperty property(name, std::move(value));
    property.addQualifier(keyQualifier());
    return property;
}

} // namespace Pegasus
