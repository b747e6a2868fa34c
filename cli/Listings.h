#ifndef CLI_LISTINGS_H
#define CLI_LISTINGS_H

#include <vector>

#include "array/Snapshot.h"
#include "cli/Listing.h"

namespace cli {

// The listings that more than one command shows; of these objects, in this order.
Listing initiatorListing(const array::Snapshot& array, const std::vector<array::Id>& initiators);
Listing unitListing(const array::Snapshot& array, const std::vector<array::Id>& units);
Listing sessionListing(const array::Snapshot& array, const std::vector<array::Id>& sessions);

// A size of a unit's volume, which is null if the volume is gone.
std::string unitSizeText(const Json& size);

// The portals of a session's connections.
Json portalsOf(const array::Snapshot& array, array::Id session);

} // namespace cli

#endif
