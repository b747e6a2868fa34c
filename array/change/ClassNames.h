#ifndef ARRAY_CHANGE_CLASS_NAMES_H
#define ARRAY_CHANGE_CLASS_NAMES_H

#include "array/Snapshot.h"

namespace array {

// What people call an object of a class, such as "logical unit".
const char* className(CLASSID_e objectClass);

// Throws DRAVOperationFailedException for an id that names no object of the class that is wanted:
// with ErrorCode::WrongClass if it is one of another class, else with NoSuchObject.
[[noreturn]] void failNoSuchObject(const Snapshot& snapshot, Id id, CLASSID_e wanted);

} // namespace array

#endif
