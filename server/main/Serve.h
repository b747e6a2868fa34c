// smisd from its options to its end.
#pragma once

#include "server/main/Options.h"

namespace smisd {

// Puts the server together, prints a line with its addresses once it serves, and serves until it is
// told to stop. Throws a std::exception that names the culprit when it cannot start.
void serve(const Options& options);

} // namespace smisd
