// Reads MOF files (DMTF DSP0004) into the repository.
#pragma once

#include "server/schema/MofError.h"
#include "server/schema/Repository.h"

#include <filesystem>

namespace smisd {

// Declares what the file and the files that it includes declare, in their order: in `nameSpace`,
// or in the one that a `#pragma namespace` names, which holds to the end of the file. The name in
// a `#pragma include` is relative to the file it stands in; other pragmas have no effect.
//
// Throws MofError at the first mistake, a file that cannot be read among them; the repository then
// holds what came before it.
void readMof(const std::filesystem::path& file, const Pegasus::CIMNamespaceName& nameSpace,
             Repository& repository);

} // namespace smisd
