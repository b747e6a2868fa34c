#pragma once

#include <string>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>

namespace Pegasus {

// The events of the two services, which are named like their sources, without the extension; line
// is where the event says that it was published.

// A client invokes a method of the service.
void publishInvoked(const std::string& service, int line, const CIMObjectPath& objectReference,
                    const CIMName& methodName);

// A client calls an operation that the service does not implement.
void publishUnimplemented(const std::string& service, const std::string& operation, int line,
                          const CIMObjectPath& instanceReference);

} // namespace Pegasus
