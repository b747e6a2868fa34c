#include "providers/frame/Objects.h"

#include <utility>

#include "engine/CurrentName.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVKeys.h"
#include "engine/NameConstants.h"

namespace Pegasus {

namespace {

const CIMName QUALIFIER_Key("Key");

CIMQualifier keyQualifier() {
    return CIMQualifier(QUALIFIER_Key, CIMValue(true), CIMFlavor::NONE, false);
}

CIMProperty endProperty(const CIMName& className, const AssociationEnd& end,
                        Boolean withQualifier) {
    CIMProperty property(end.role, CIMValue(end.path), 0, end.referenceClass, className, false);
    if (withQualifier) {
        property.addQualifier(keyQualifier());
    }
    return property;
}

} // namespace

CIMObjectPath modulePath(const CIMName& className, Array<CIMKeyBinding> keys) {
    return CIMObjectPath(currentName(DRAVEngine::_OvrinHostNamePtr), SNIA_NAMESPACE, className,
                         std::move(keys));
}

CIMObjectPath modulePath(const CIMName& className, const CIMName& keyName, Uint32 id) {
    Array<CIMKeyBinding> keys;
    keys.append(stringKey(keyName, DRAVObjectKey(id)));
    return modulePath(className, std::move(keys));
}

CIMObjectPath storageHardwareIDPath(Uint32 initiatorId) {
    return modulePath(CLASS_StorageHardwareID, PROPERTY_InstanceID, initiatorId);
}

CIMKeyBinding stringKey(const CIMName& name, String value) {
    return CIMKeyBinding(name, std::move(value), CIMKeyBinding::STRING);
}

CIMProperty keyProperty(const CIMName& name, CIMValue value) {
    CIMProperty property(name, std::move(value));
    property.addQualifier(keyQualifier());
    return property;
}

CIMObjectPath associationPath(const CIMName& className, const AssociationEnd& first,
                              const AssociationEnd& second) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(first.role, CIMValue(first.path)));
    keys.append(CIMKeyBinding(second.role, CIMValue(second.path)));
    return modulePath(className, keys);
}

CIMInstance associationInstance(const CIMName& className, const AssociationEnd& first,
                                const AssociationEnd& second, Boolean keyQualifiers) {
    CIMInstance instance(className);
    instance.addProperty(endProperty(className, first, keyQualifiers));
    instance.addProperty(endProperty(className, second, keyQualifiers));
    instance.setPath(associationPath(className, first, second));
    return instance;
}

} // namespace Pegasus
