#pragma once

#include "engine/ManagedObject.h"

namespace Pegasus {

// An iSCSI target of the array.
struct DRAV_EXPORT DRAVTarget : ManagedObject {
    explicit DRAVTarget(const String& iSCSIName);
    ~DRAVTarget() override;

    String name;                // iSCSI name (RFC 7143 section 4.2.7)
    Uint32 sessionPresence = 0; // non-zero: the target has sessions that may be listed
    String secret;              // CHAP secret that the target proves; empty: none
};

} // namespace Pegasus
