// smisd hash-password
#pragma once

#include <string>

#include "server/operation/Dispatcher.h"

namespace smisd {

// Reads a password, one line of standard input, which a terminal does not show; prints the user's
// line of the users file. Throws std::runtime_error for an empty password or a bad name.
void printUsersFileLine(const std::string& name, Role role);

} // namespace smisd
