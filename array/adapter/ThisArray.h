#pragma once

#include <functional>

#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/ProviderException.h>

#include "array/Array.h"
#include "array/model/Ids.h"
#include "array/model/Snapshot.h"
#include "array/model/Text.h"

namespace array {

// The array that this process's DRAVEngine serves: that of stateDirectory(), opened at the first
// call that succeeds. Throws as Array::open does, and tries again at the next call. From any
// thread.
Array& theArray();

// The array as the engine of this process sees it: within an operation of the calling thread
// (engine/OperationScope.h) always the same, until the operation itself changes the array; else the
// newest. DRAVEngine's name pointers show its names from then on, unless they show newer ones.
// Throws DRAVOperationFailedException if its state cannot be read; the next call tries again.
SnapshotPtr currentSnapshot();

// Changes theArray(), as Array::change does. What the operation of the calling thread reads next
// contains the change.
void changeArray(const std::function<void(Change&)>& make);

// The array's own names, as paths carry them.
struct PathNames {
    Pegasus::String host;
    Pegasus::String system;
};

// Those of currentSnapshot(). They live as long as the process.
const PathNames& currentNames();

// A record that was looked up. Throws CIMObjectNotFoundException, which names the id by its key
// text, if there is none.
template<class Record>
const Record& found(const Record* record, Id id) {
    if (!record) {
        throw Pegasus::CIMObjectNotFoundException(fromUtf8(givenKey(id)));
    }
    return *record;
}

} // namespace array
