#pragma once

#include "engine/ManagedObject.h"

namespace Pegasus {

// A volume mapped under a target.
struct DRAV_EXPORT DRAVLogicalUnit : ManagedObject {
    DRAVLogicalUnit(Uint32 targetID, Uint32 lun, Uint32 readOnly, Uint32 volumeID);
    ~DRAVLogicalUnit() override;

    Uint32 targetID;
    Uint32 lun;        // logical unit number that the initiator sees
    Uint32 readOnly;   // 0 read/write, 1 read-only, any other value no access
    Uint32 volumeID;   // 0: the volume's record is gone
    String volumeName; // kept by the engine when the volume's record is gone
};

} // namespace Pegasus
