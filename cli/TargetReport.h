#pragma once

#include "array/model/Snapshot.h"
#include "cli/Report.h"

namespace cli {

// All about a target: its units, initiators and sessions, the login parameters that it proposes,
// and its statistics; each with the key under which a CIM client reads it.
Report targetReport(const array::Snapshot& snapshot, array::Id target);

} // namespace cli
