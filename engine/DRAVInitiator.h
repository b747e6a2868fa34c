#pragma once

#include "engine/ManagedObject.h"

namespace Pegasus {

// A host known to the array.
struct DRAV_EXPORT DRAVInitiator : ManagedObject {
    explicit DRAVInitiator(const String& iSCSIName);
    ~DRAVInitiator() override;

    String name;   // iSCSI name (RFC 7143 section 4.2.7)
    String secret; // CHAP secret that the initiator proves; empty: none
};

} // namespace Pegasus
