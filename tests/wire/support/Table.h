// A table of pairs: requests made of others, with what is answered to them.
#pragma once

#include <map>

#include "tests/wire/support/Pair.h"

namespace wire {

// By name.
using Templates = std::map<std::string, Pair>;

// The pairs of a table as tests/wire/pairs/README.md describes it. Throws, with the name of the
// row, when one does not fit its template.
std::vector<Pair> readTable(const std::filesystem::path& file, const Templates& templates);

} // namespace wire
