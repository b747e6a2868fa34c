#pragma once

#include "array/model/Snapshot.h"
#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/DRAVTarget.h"
#include "engine/DRAVVolume.h"

namespace array {

// From the array's records to those of the engine interface, and back. What a record tells beside
// its own values comes from the snapshot.
Pegasus::DRAVInitiator toEngine(const Snapshot& snapshot, Id id, const Initiator& initiator);
Pegasus::DRAVTarget toEngine(const Snapshot& snapshot, Id id, const Target& target);
Pegasus::DRAVLogicalUnit toEngine(const Snapshot& snapshot, Id id, const LogicalUnit& unit);
Pegasus::DRAVVolume toEngine(const Snapshot& snapshot, Id id, const Volume& volume);
Pegasus::DRAVSessionSettings toEngine(const Snapshot& snapshot, Id id,
                                      const SessionParameters& parameters);
Pegasus::DRAVConnectionSettings toEngine(const Snapshot& snapshot, Id id,
                                         const ConnectionParameters& parameters);

Initiator fromEngine(const Pegasus::DRAVInitiator& record);
Target fromEngine(const Pegasus::DRAVTarget& record);
LogicalUnit fromEngine(const Pegasus::DRAVLogicalUnit& record);
Volume fromEngine(const Pegasus::DRAVVolume& record);
SessionParameters fromEngine(const Pegasus::DRAVSessionSettings& record);
ConnectionParameters fromEngine(const Pegasus::DRAVConnectionSettings& record);

} // namespace array
