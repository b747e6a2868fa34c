#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include "engine/Export.h"

namespace Pegasus {

// The text of an object id in CIM keys: "Ovrin:" and eight upper-case hexadecimal digits.
class DRAV_EXPORT DRAVObjectKey : public String {
public:
    explicit DRAVObjectKey(Uint32 id);
};

// Reads such a text back. Any other text gives 0xFFFFFFFF, which names nothing: no class has the
// number 255. It is not 0, because 0 stands for a volume that is gone.
struct DRAV_EXPORT DRAVObjectID {
    explicit DRAVObjectID(const String& keyText);
    Uint32 id;
};

// Reads an unsigned decimal number below 2^32, as LUNs are given by clients: digits only. A text of
// any other form throws DRAVOperationFailedException, which quotes it.
struct DRAV_EXPORT DRAVObjectIDDecimal {
    explicit DRAVObjectIDDecimal(const String& text);
    Uint32 id;
};

} // namespace Pegasus
