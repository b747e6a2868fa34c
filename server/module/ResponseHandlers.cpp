#include "server/module/ResponseHandlers.h"

#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace smisd {

void failNotInitialized() {
    throw CIMException(CIM_ERR_FAILED, String("The object is not initialized."));
}

void failTooFew() {
    throw CIMException(CIM_ERR_FAILED, String("Too few objects delivered."));
}

void failTooMany() {
    throw CIMException(CIM_ERR_FAILED, String("Too many objects delivered."));
}

} // namespace smisd
