// The MOF files that the server starts with.
#pragma once

#include "server/schema/Repository.h"

#include <filesystem>

namespace smisd {

inline constexpr const char* elementNamespace = "root/snia";
inline constexpr const char* interopNamespace = "root/PG_InterOp"; // OpenPegasus' name for it
inline constexpr const char* otherInteropNamespaces[] = {"interop", "root/interop"};

// Reads access-schema.mof of the folder into the namespace of the managed elements,
// interop-schema.mof and interop-instances.mof into the interop namespaces, under each name that
// clients try, and access-registration.mof into the first. Throws MofError.
void readMofDirectory(const std::filesystem::path& directory, Repository& repository);

} // namespace smisd
