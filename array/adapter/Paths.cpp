#include "array/adapter/Paths.h"

#include <Pegasus/Common/CIMValue.h>

#include "array/adapter/CimNames.h"
#include "array/adapter/ThisArray.h"
#include "array/model/Text.h"
#include "engine/DRAVKeys.h"

namespace array {

using Pegasus::CIMKeyBinding;
using Pegasus::CIMNamespaceName;
using Pegasus::CIMValue;
using Pegasus::DRAVObjectKey;
using Pegasus::String;

using Keys = Pegasus::Array<CIMKeyBinding>;

namespace {

CIMObjectPath arrayPath(const CIMName& className, const Keys& keys) {
    static const CIMNamespaceName snia("root/snia");
    return CIMObjectPath(currentNames().host, snia, className, keys);
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
        stringKey(name::SystemName, currentNames().system),
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

using Pegasus::String;

String targetName(const Snapshot& snapshot, Id target) {
    const Target* const record = snapshot.target(target);
    return record ? fromUtf8(record->name) : String::EMPTY;
}

String initiatorName(const Snapshot& snapshot, Id session) {
    const Session* const record = snapshot.session(session);
    const Initiator* const initiator = record ? snapshot.initiator(record->initiator) : nullptr;
    return initiator ? fromUtf8(initiator->name) : String::EMPTY;
}

String portalName(const Snapshot& snapshot, Id endpoint) {
    const Endpoint* const record = snapshot.endpoint(endpoint);
    if (!record) {
        return String::EMPTY;
    }
    const bool ipv6 = record->address.find(':') != std::string::npos;
    const std::string address = ipv6 ? "[" + record->address + "]" : record->address;
    return fromUtf8(address + ":" + std::to_string(record->port));
}

} // namespace array
