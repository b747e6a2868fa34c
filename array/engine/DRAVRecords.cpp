#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/DRAVTarget.h"
#include "engine/DRAVVolume.h"

namespace Pegasus {

DRAVInitiator::DRAVInitiator(const String& iSCSIName) : name(iSCSIName) {}
DRAVInitiator::~DRAVInitiator() = default;

DRAVTarget::DRAVTarget(const String& iSCSIName) : name(iSCSIName) {}
DRAVTarget::~DRAVTarget() = default;

DRAVLogicalUnit::DRAVLogicalUnit(Uint32 target, Uint32 number, Uint32 access, Uint32 volume)
    : targetID(target), lun(number), readOnly(access), volumeID(volume) {}
DRAVLogicalUnit::~DRAVLogicalUnit() = default;

DRAVVolume::DRAVVolume() = default;
DRAVVolume::~DRAVVolume() = default;

DRAVSessionSettings::DRAVSessionSettings() = default;
DRAVSessionSettings::~DRAVSessionSettings() = default;

DRAVConnectionSettings::DRAVConnectionSettings() = default;
DRAVConnectionSettings::~DRAVConnectionSettings() = default;

} // namespace Pegasus
