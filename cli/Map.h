#pragma once

#include <iosfwd>

#include "array/model/Snapshot.h"
#include "cli/Listing.h"

namespace cli {

// The whole array as hosts see it: each host with the targets that it may reach, their logical
// units and its sessions; then the targets that no host may reach, and the volumes under no target.
// Tells of secrets only whether they are set.
Json mapOf(const array::Snapshot& array);

// Draws such a map.
void drawMap(std::ostream& out, const Json& map);

} // namespace cli
