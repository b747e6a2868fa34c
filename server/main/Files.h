#pragma once

#include <filesystem>
#include <initializer_list>

// Files that are installed together with the program.

namespace smisd {

// The first of the paths, relative to the program's directory, that exists; else the first one. So
// an installation may stand anywhere, and a build tree serves as one.
std::filesystem::path besideProgram(std::initializer_list<std::filesystem::path> relative);

// The state directory, which the server hands to the array unread.

// Tells the array by way of the environment; creates the directory with mode 0700 when there is
// none. Throws std::runtime_error that names it when it cannot be read and written.
//
// Before other threads start and before the module is loaded.
void passStateDirectory(const std::filesystem::path& directory);

} // namespace smisd
