// Files that are installed together with the program.
#pragma once

#include <filesystem>
#include <initializer_list>

namespace smisd {

// The first of the paths, relative to the program's directory, that exists; else the first one. So
// an installation may stand anywhere, and a build tree serves as one.
std::filesystem::path besideProgram(std::initializer_list<std::filesystem::path> relative);

} // namespace smisd
