#pragma once

#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

// The module's one exported symbol. Makes the provider of this name, compared without regard to
// case, and says so in a line on standard output. The provider belongs to the caller, who calls
// initialize before any operation. Null, without a line, for a name that is not the module's.
extern "C" __attribute__((visibility("default"))) Pegasus::CIMProvider*
PegasusCreateProvider(const Pegasus::String& providerName);
