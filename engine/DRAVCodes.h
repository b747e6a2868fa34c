#pragma once

#include <Pegasus/Common/Config.h>

#include "engine/Export.h"

namespace Pegasus {

// The engine's digest codes.
enum DRAVDigest_e : Uint16 {
    DRAV_DIGEST_NONE = 0,
    DRAV_DIGEST_CRC32C = 1,
    DRAV_DIGEST_NO_PREFERENCE = 8, // no second choice
    DRAV_DIGEST_OTHER = 9,
    DRAV_DIGEST_UNKNOWN = 0xFFFF // refused by modifyObject
};

// The engine's authentication codes.
enum DRAVAuth_e : Uint16 {
    DRAV_AUTH_NO_AUTHENTICATION = 0,
    DRAV_AUTH_CHAP = 1,
    DRAV_AUTH_SRP = 7,
    DRAV_AUTH_KERBEROS = 8,
    DRAV_AUTH_NONE = 9,        // no method at all
    DRAV_AUTH_UNKNOWN = 0xFFFF // refused by modifyObject
};

// From a number of the CIM value maps of CIM_iSCSIConnectionSettings' digest properties (1 Other,
// 2 No Digest, 3 CRC32C, 4 No Secondary Preference) to the engine's code. Never fails: a number
// outside of the map gives DRAV_DIGEST_UNKNOWN.
struct DRAV_EXPORT DRAVDigestFromSMI {
    explicit DRAVDigestFromSMI(Uint16 smiValue);
    Uint16 code;
};

// The same for its authentication properties (2 None, 3 No Authentication, 4 SRP, 5 CHAP,
// 6 Kerberos); otherwise DRAV_AUTH_UNKNOWN.
struct DRAV_EXPORT DRAVAuthSettingFromSMI {
    explicit DRAVAuthSettingFromSMI(Uint16 smiValue);
    Uint16 code;
};

} // namespace Pegasus
