#pragma once

#include <string>

#include "cli/Context.h"

namespace cli {

// Reads a secret: asks for it on the terminal without showing what is typed, if standard input is
// one; else it is the first line of standard input. Throws std::runtime_error if there is none.
std::string readSecret(Context& context, const std::string& prompt);

// The same for a secret that is being set: on a terminal it is asked for twice and must be the
// same.
std::string readNewSecret(Context& context, const std::string& prompt);

} // namespace cli
