#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include "engine/Export.h"

namespace Pegasus {

enum EMP_TYPE_e {
    EMP_TYPE_METHOD_INVOKED = 1, // a client called a method
    EMP_TYPE_UNIMPLEMENTED = 2   // a client called an operation that is refused
};

// Where providers announce what clients did.
class DRAV_EXPORT SMIEventServices {
public:
    // Publishes one event. Never throws and never waits for a reader: an event that cannot be
    // written is dropped. May be called from any thread; the texts are copied.
    //
    // text        what happened
    // keyValues   pairs "name=value", joined by ", "
    // line, operation, file   where in the source the event is published
    //
    // channel and severity are the caller's fixed 0 and 29; they are kept with the event.
    static void publishKeyValueEvent(int channel, EMP_TYPE_e type, const char* text,
                                     String keyValues, Uint8 severity, int line,
                                     const char* operation, const char* file);
};

} // namespace Pegasus
