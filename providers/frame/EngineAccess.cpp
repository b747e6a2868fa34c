#include "providers/frame/EngineAccess.h"

#include <string>

#include <Pegasus/Provider/ProviderException.h>

#include "engine/DRAVKeys.h"

namespace Pegasus {

void failWithoutRecord(CLASSID_e objectClass, Uint32 id) {
    const std::string text = "the engine has no record of class " + std::to_string(objectClass);
    throw CIMObjectNotFoundException(DRAVObjectKey(id) + String(": ") + String(text.c_str()));
}

} // namespace Pegasus
