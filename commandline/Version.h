#pragma once

namespace commandline {

// Of this release, such as "1.2.0"; the one that CMakeLists.txt names.
extern const char* const version;

} // namespace commandline
