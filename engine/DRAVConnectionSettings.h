#pragma once

#include "engine/DRAVCodes.h"
#include "engine/ManagedObject.h"

namespace Pegasus {

// The connection parameters that a target proposes at login (RFC 7143 section 13). Defaults are the
// CIM schema's.
struct DRAV_EXPORT DRAVConnectionSettings : ManagedObject {
    DRAVConnectionSettings();
    ~DRAVConnectionSettings() override;

    Uint32 maxRecvDataSegmentLength = 8192; // bytes
    Uint16 primaryHeaderDigest = DRAV_DIGEST_CRC32C;
    Uint16 primaryDataDigest = DRAV_DIGEST_CRC32C;
    Uint16 secondaryHeaderDigest = DRAV_DIGEST_NONE;
    Uint16 secondaryDataDigest = DRAV_DIGEST_NONE;
    Uint32 markersOnReceive = 0; // 0 or 1
    Uint16 primaryAuthMethod = DRAV_AUTH_CHAP;
    Uint16 secondaryAuthMethod = DRAV_AUTH_NO_AUTHENTICATION;
};

} // namespace Pegasus
