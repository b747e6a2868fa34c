#pragma once

#include <Pegasus/Provider/ProviderException.h>

#include "array/Array.h"
#include "array/model/Snapshot.h"
#include "engine/DRAVKeys.h"

namespace array {

// The array that this process's DRAVEngine serves: that of stateDirectory(), opened at the first
// call that succeeds. Throws as Array::open does, and tries again at the next call. From any
// thread.
Array& theArray();

// Lets DRAVEngine's name pointers point to the names of a snapshot; costs a comparison if they do
// already. The strings that they pointed to before live on, because a reader may be using them.
void showNames(const Snapshot& snapshot);

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
    if (!record) {
        throw Pegasus::CIMObjectNotFoundException(Pegasus::DRAVObjectKey(id));
    }
    return *record;
}

} // namespace array
