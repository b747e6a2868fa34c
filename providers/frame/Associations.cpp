#include "providers/frame/Associations.h"

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>

#include "providers/frame/Paths.h"

namespace Pegasus {

namespace {

CIMProperty endProperty(const CIMName& className, const AssociationEnd& end,
                        Boolean withQualifier) {
    CIMProperty property(end.role, CIMValue(end.path), 0, end.referenceClass, className, false);
    if (withQualifier) {
        property.addQualifier(keyQualifier());
    }
    return property;
}

} // namespace

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
