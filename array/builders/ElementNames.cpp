#include "array/builders/ElementNames.h"

#include "array/engine/Text.h"

namespace array {

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
    if (!record)
        return String::EMPTY;
    const bool ipv6 = record->address.find(':') != std::string::npos;
    const std::string address = ipv6 ? "[" + record->address + "]" : record->address;
    return fromUtf8(address + ":" + std::to_string(record->port));
}

} // namespace array
