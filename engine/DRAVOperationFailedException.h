#pragma once

#include <Pegasus/Provider/ProviderException.h>

#include "engine/Export.h"

namespace Pegasus {

// Every failure of the engine. The message names the object and the rule, and never holds a secret.
class DRAV_EXPORT DRAVOperationFailedException : public CIMOperationFailedException {
public:
    DRAVOperationFailedException(Uint32 errorCode, const String& message);
    ~DRAVOperationFailedException() override;

    Uint32 code; // the engine's error number
};

} // namespace Pegasus
