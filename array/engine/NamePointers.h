#ifndef ARRAY_ENGINE_NAME_POINTERS_H
#define ARRAY_ENGINE_NAME_POINTERS_H

#include "array/Snapshot.h"

namespace array {

// Lets DRAVEngine's name pointers point to the names of a snapshot; costs a comparison if they do
// already. The strings that they pointed to before live on, because a reader may be using them.
void showNames(const Snapshot& snapshot);

} // namespace array

#endif
