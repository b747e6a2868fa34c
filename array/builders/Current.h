#ifndef ARRAY_BUILDERS_CURRENT_H
#define ARRAY_BUILDERS_CURRENT_H

#include <Pegasus/Provider/ProviderException.h>

#include "array/Snapshot.h"
#include "array/TheArray.h"
#include "array/engine/NamePointers.h"
#include "engine/DRAVKeys.h"

namespace array {

// The array as the engine of this process sees it now, whose names paths carry from then on. Throws
// DRAVOperationFailedException if its state cannot be read.
inline SnapshotPtr currentSnapshot() {
    SnapshotPtr now = theArray().snapshot();
    showNames(*now);
    return now;
}

// A record that was looked up. Throws CIMObjectNotFoundException with the id's key text if there is
// none.
template<class Record>
const Record& found(const Record* record, Id id) {
    if (!record)
        throw Pegasus::CIMObjectNotFoundException(Pegasus::DRAVObjectKey(id));
    return *record;
}

} // namespace array

#endif
