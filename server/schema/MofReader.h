// Reads MOF files (DMTF DSP0004) into the repository.
#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "server/schema/Schema.h"

namespace smisd {

// A mistake in a MOF file. what() is "FILE:LINE:COLUMN: TEXT", where TEXT says what was expected
// there. Lines and columns count from 1; columns in bytes.
class MofError : public std::runtime_error {
public:
    MofError(const std::string& file, size_t line, size_t column, const std::string& text)
        : std::runtime_error(file + ":" + std::to_string(line) + ":" + std::to_string(column) +
                             ": " + text) {}
};

// Declares what the file and the files that it includes declare, in their order: in `nameSpace`,
// or in the one that a `#pragma namespace` names, which holds to the end of the file. The name in
// a `#pragma include` is relative to the file it stands in; other pragmas have no effect.
//
// Throws MofError at the first mistake, a file that cannot be read among them; the repository then
// holds what came before it.
void readMof(const std::filesystem::path& file, const Pegasus::CIMNamespaceName& nameSpace,
             Repository& repository);

// The MOF files that the server starts with.

inline constexpr const char* elementNamespace = "root/snia";
inline constexpr const char* interopNamespace = "root/PG_InterOp"; // OpenPegasus' name for it
inline constexpr const char* otherInteropNamespaces[] = {"interop", "root/interop"};

// Reads access-schema.mof of the folder into the namespace of the managed elements,
// interop-schema.mof and interop-instances.mof into the interop namespaces, under each name that
// clients try, and access-registration.mof into the first. Throws MofError.
void readMofDirectory(const std::filesystem::path& directory, Repository& repository);

} // namespace smisd
