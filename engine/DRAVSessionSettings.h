#pragma once

#include "engine/ManagedObject.h"

namespace Pegasus {

// The session parameters that a target proposes at login (RFC 7143 section 13). Defaults are that
// RFC's and the CIM schema's.
struct DRAV_EXPORT DRAVSessionSettings : ManagedObject {
    DRAVSessionSettings();
    ~DRAVSessionSettings() override;

    Uint32 maxConnections = 1;
    Uint32 initialR2T = 1;    // 0 or 1
    Uint32 immediateData = 1; // 0 or 1
    Uint32 maxOutstandingR2T = 1;
    Uint32 firstBurstLength = 65536; // bytes
    Uint32 maxBurstLength = 262144;  // bytes
    Uint32 dataSequenceInOrder = 1;  // 0 or 1
    Uint32 dataPDUInOrder = 1;       // 0 or 1
    Uint32 defaultTime2Wait = 2;     // seconds
    Uint32 defaultTime2Retain = 20;  // seconds
    Uint32 errorRecoveryLevel = 0;
};

} // namespace Pegasus
