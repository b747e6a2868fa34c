#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include "engine/Export.h"

namespace Pegasus {

// Base of the engine's records. A record is a private copy of one object's values: it belongs to
// who created it or got it from DRAVEngine::getObject, and is deleted through this class. A record
// must not be used by two threads at once.
class DRAV_EXPORT ManagedObject {
public:
    virtual ~ManagedObject();

    // The id of the object that the record was read from; 0 in a record that was made anew.
    Uint32 objectID = 0;

    // The key under which getObjectIDByKey finds a volume, from the hexadecimal text of its name:
    // one character per two digits. Digits of either case give the same key. A text that is empty,
    // of odd length or not hexadecimal gives the empty key, which no volume has.
    static String hexToBin(const String& text);

protected:
    ManagedObject() = default;
    ManagedObject(const ManagedObject&) = default;
    ManagedObject& operator=(const ManagedObject&) = default;
};

} // namespace Pegasus
