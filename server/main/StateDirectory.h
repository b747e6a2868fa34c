// The state directory, which the server hands to the array unread.
#pragma once

#include <filesystem>

namespace smisd {

// Tells the array by way of the environment; creates the directory with mode 0700 when there is
// none. Throws std::runtime_error that names it when it cannot be read and written.
//
// Before other threads start and before the module is loaded.
void passStateDirectory(const std::filesystem::path& directory);

} // namespace smisd
