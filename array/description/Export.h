#pragma once

#include <functional>

#include "array/description/Reader.h"
#include "array/model/Snapshot.h"

namespace array::description {

// Gives an array's content to a receiver as a description has it: host, system, and the sections
// in their order, each in the order of ids. afterEach is called after each entry.
//
// A logical unit whose volume is gone has no place in a description. Returns how many of them were
// left out.
std::size_t exportTo(
    Receiver& receiver, const Snapshot& snapshot, const std::function<void()>& afterEach = [] {});

// The number of entries that exportTo gives.
std::size_t countEntries(const Snapshot& snapshot);

} // namespace array::description
