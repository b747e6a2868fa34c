// smisd from its options to its end.
#pragma once

#include <filesystem>

#include "server/main/Options.h"

namespace smisd {

// Puts the server together, prints a line with its addresses once it serves, and serves until it is
// told to stop. Throws a std::exception that names the culprit when it cannot start.
void serve(const Options& options);

// Names the state directory to the array by way of the environment; creates the directory with mode
// 0700 when there is none. Throws std::runtime_error that names it when it cannot be read and
// written.
//
// Before other threads start and before the module is loaded.
void passStateDirectory(const std::filesystem::path& directory);

} // namespace smisd
