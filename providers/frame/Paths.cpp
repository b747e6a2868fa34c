#include "providers/frame/Paths.h"

#include "engine/CurrentName.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVKeys.h"
#include "engine/NameConstants.h"

namespace Pegasus {

CIMObjectPath modulePath(const CIMName& className, const Array<CIMKeyBinding>& keys) {
    return CIMObjectPath(currentName(DRAVEngine::_OvrinHostNamePtr), SNIA_NAMESPACE, className,
                         keys);
}

CIMObjectPath modulePath(const CIMName& className, const CIMName& keyName, Uint32 id) {
    Array<CIMKeyBinding> keys;
    keys.append(stringKey(keyName, DRAVObjectKey(id)));
    return modulePath(className, keys);
}

CIMKeyBinding stringKey(const CIMName& name, const String& value) {
    return CIMKeyBinding(name, value, CIMKeyBinding::STRING);
}

CIMQualifier keyQualifier() {
    static const CIMName name("Key");
    return CIMQualifier(name, CIMValue(true), CIMFlavor::NONE, false);
}

CIMProperty keyProperty(const CIMName& name, const CIMValue& value) {
    CIMProperty property(name, value);
    property.addQualifier(keyQualifier());
    return property;
}

} // namespace Pegasus
