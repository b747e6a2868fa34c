#include "engine/DRAVOperationFailedException.h"

namespace Pegasus {

DRAVOperationFailedException::DRAVOperationFailedException(Uint32 errorCode, const String& message)
    : CIMOperationFailedException(message), code(errorCode) {}

DRAVOperationFailedException::~DRAVOperationFailedException() = default;

} // namespace Pegasus
