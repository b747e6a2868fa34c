// The MOF files that the server starts with.
#pragma once

#include "server/schema/Repository.h"

#include <filesystem>

namespace smisd {

inline constexpr const char* elementNamespace = "root/snia";
inline constexpr const char* interopNamespace = "root/PG_InterOp";

// Reads access-schema.mof of the folder into the namespace of the managed elements, and
// interop-schema.mof and access-registration.mof into the interop namespace. Throws MofError.
void readMofDirectory(const std::filesystem::path& directory, Repository& repository);

} // namespace smisd
