#pragma once

#include "engine/ManagedObject.h"

namespace Pegasus {

// A storage volume.
struct DRAV_EXPORT DRAVVolume : ManagedObject {
    DRAVVolume();
    ~DRAVVolume() override;

    String name;        // hexadecimal text of the volume's NAA identifier
    Uint32 state = 0;   // 0 in service, 3 the volume's record is gone
    String elementName; // the administrator's name for it
    Uint64 size = 0;    // bytes
};

} // namespace Pegasus
