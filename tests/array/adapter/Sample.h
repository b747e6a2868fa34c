#pragma once

#include "array/model/Records.h"

namespace array {

// Two objects of each kind in the array of this process, which the builders read: the first with
// values that all differ and none of which is the default, the second as plain as can be.
struct Sample {
    struct Ids {
        Id endpoint, volume, initiator, target, sessionSettings, connectionSettings, session,
            connection;
    };
    Ids rich;
    Ids plain;

    SessionParameters parameters;              // of the rich session, and of its target's settings
    ConnectionParameters connectionParameters; // likewise
};

// Made at the first call, in a directory that goes when the process ends.
const Sample& sample();

} // namespace array
