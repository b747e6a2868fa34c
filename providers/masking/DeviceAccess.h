#pragma once

#include <optional>

#include <Pegasus/Common/Config.h>

namespace Pegasus {

// How initiators may use a unit: as CIM's "DeviceAccess" (2 read write, 3 read-only, 4 no access)
// and as the engine's access code (DRAVLogicalUnit::readOnly).

// The code that new units get for a value that names no access of its own.
constexpr Uint32 noAccessCode = 3;

// The access code of "read write" and "read-only"; no other value has one.
std::optional<Uint32> accessCode(Uint16 deviceAccess);

// The value of "DeviceAccess" for an access code; never fails.
Uint16 deviceAccess(Uint32 accessCode);

} // namespace Pegasus
