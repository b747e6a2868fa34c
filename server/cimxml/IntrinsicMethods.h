// The intrinsic methods and their parameters (DSP0200, "CIM Operation Descriptions").
#pragma once

#include "server/cimxml/XmlDocument.h"
#include "server/operation/Operation.h"

namespace smisd {

// Reads the IPARAMVALUEs that are left in an IMETHODCALL. Names compare without case.
//
// Throws ElementError for a parameter whose content is not of its kind, and CIMException:
// NOT_SUPPORTED for an unknown method or parameter, INVALID_PARAMETER for one that is missing,
// given twice, or has a value that its type refuses.
Operation readIntrinsicCall(Element call, const std::string& methodName,
                            const Pegasus::CIMNamespaceName& nameSpace);

} // namespace smisd
