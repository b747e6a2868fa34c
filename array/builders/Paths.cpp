#include "array/builders/Paths.h"

#include <Pegasus/Common/CIMValue.h>

#include "array/builders/Current.h"
#include "array/builders/Names.h"
#include "engine/CurrentName.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVKeys.h"

namespace array {

using Pegasus::CIMKeyBinding;
using Pegasus::CIMNamespaceName;
using Pegasus::CIMValue;
using Pegasus::DRAVEngine;
using Pegasus::DRAVObjectKey;
using Pegasus::String;

using Keys = Pegasus::Array<CIMKeyBinding>;

namespace {

// A name of the array, by the engine's pointer to it, as it is now: another process may have
// changed it.
const String& current(const String*& name) {
    currentSnapshot();
    return currentName(name);
}

CIMObjectPath arrayPath(const CIMName& className, const Keys& keys) {
    static const CIMNamespaceName snia("root/snia");
    return CIMObjectPath(current(DRAVEngine::_OvrinHostNamePtr), snia, className, keys);
}

CIMKeyBinding stringKey(const CIMName& name, const String& value) {
    return CIMKeyBinding(name, value, CIMKeyBinding::STRING);
}

} // namespace

CIMObjectPath pathWithInstanceID(const CIMName& className, Id id) {
    const CIMKeyBinding key = stringKey(name::InstanceID, DRAVObjectKey(id));
    return arrayPath(className, Keys(&key, 1));
}

CIMObjectPath pathInSystem(const CIMName& className, const CIMName& lastKey,
                           const String& lastValue) {
    const CIMKeyBinding keys[] = {
        stringKey(name::SystemCreationClassName, name::ComputerSystem.getString()),
        stringKey(name::SystemName, current(DRAVEngine::_OvrinSystemNamePtr)),
        stringKey(name::CreationClassName, className.getString()),
        stringKey(lastKey, lastValue),
    };
    return arrayPath(className, Keys(keys, 4));
}

CIMObjectPath pathOfAssociation(const CIMName& className, const CIMName& first,
                                const CIMObjectPath& firstEnd, const CIMName& second,
                                const CIMObjectPath& secondEnd) {
    const CIMKeyBinding keys[] = {
        CIMKeyBinding(first, CIMValue(firstEnd)),
        CIMKeyBinding(second, CIMValue(secondEnd)),
    };
    return arrayPath(className, Keys(keys, 2));
}

} // namespace array
