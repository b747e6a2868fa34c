#pragma once

#include <Pegasus/Common/CIMName.h>

namespace Pegasus {

// Names that several providers use and engine/NameConstants.h lacks.
inline const CIMName CLASS_StorageHardwareID("CIM_StorageHardwareID");
inline const CIMName CLASS_SCSIProtocolController("CIM_SCSIProtocolController");

inline const CIMName PROPERTY_InstanceID("InstanceID");

} // namespace Pegasus
