// Providers' calls back into the server.
#pragma once

#include <Pegasus/Provider/CIMOMHandle.h>

#include "server/operation/Dispatcher.h"

namespace smisd {

// A handle whose calls go to the dispatcher, on the thread of the provider that makes them and for
// the user of the request whose context it passes. Errors arrive as CIMException with the code and
// the bare text that the dispatcher gave them.
//
// The dispatcher must outlive every call through a copy of the handle.
Pegasus::CIMOMHandle makeUpCallHandle(Dispatcher& dispatcher);

} // namespace smisd
