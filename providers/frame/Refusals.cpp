#include "providers/frame/Refusals.h"

#include <Pegasus/Provider/ProviderException.h>

namespace Pegasus {

void refuse(const char* text) {
    throw CIMNotSupportedException(text);
}

} // namespace Pegasus
