// Whether the server can do its work.
#pragma once

#include "server/operation/Dispatcher.h"

#include <string>

namespace smisd {

// Reads the first host of the array, if it has any, by way of the module. "" when that works, else
// why it does not.
std::string whyNotHealthy(Dispatcher& dispatcher);

} // namespace smisd
