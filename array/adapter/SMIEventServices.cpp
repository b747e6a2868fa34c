#include "engine/SMIEventServices.h"

#include "array/adapter/ThisArray.h"
#include "array/events/EventLog.h"
#include "array/model/Text.h"

namespace Pegasus {

namespace {

const char* typeText(EMP_TYPE_e type) {
    return type == EMP_TYPE_METHOD_INVOKED ? "method-invoked" : "unimplemented";
}

} // namespace

void SMIEventServices::publishKeyValueEvent(int channel, EMP_TYPE_e type, const char* text,
                                            String keyValues, Uint8 severity, int line,
                                            const char* operation, const char* file) {
    try {
        array::Event event;
        event.type = typeText(type);
        event.text = text;
        event.keyValues = array::toUtf8(keyValues);
        event.channel = channel;
        event.severity = severity;
        event.operation = operation;
        event.file = file;
        event.line = line;
        array::theArray().events().publish(event);
    } catch (...) {
        // Dropped: no state directory to write it to, or no memory.
    }
}

} // namespace Pegasus
