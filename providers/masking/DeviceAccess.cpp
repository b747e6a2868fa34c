#include "providers/masking/DeviceAccess.h"

namespace Pegasus {

namespace {

struct Row {
    Uint16 deviceAccess;
    Uint32 accessCode;
};

constexpr Row accesses[] = {
    {2, 0}, // read write
    {3, 1}, // read-only
};

} // namespace

std::optional<Uint32> accessCode(Uint16 deviceAccess) {
    for (const Row& row : accesses) {
        if (row.deviceAccess == deviceAccess) {
            return row.accessCode;
        }
    }
    return std::nullopt;
}

Uint16 deviceAccess(Uint32 accessCode) {
    constexpr Uint16 noAccess = 4;
    for (const Row& row : accesses) {
        if (row.accessCode == accessCode) {
            return row.deviceAccess;
        }
    }
    return noAccess;
}

} // namespace Pegasus
