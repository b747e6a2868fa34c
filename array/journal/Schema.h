#ifndef ARRAY_JOURNAL_SCHEMA_H
#define ARRAY_JOURNAL_SCHEMA_H

#include <SQLiteCpp/Database.h>

#include "array/Records.h"

namespace array {

// The mark of an array.db in SQLite's header, and the version of what is in it.
constexpr int applicationId = 0x44524156; // "DRAV"
constexpr int schemaVersion = 1;

// Makes all tables in an empty database, and the row of an array without objects.
void createSchema(SQLite::Database& database, const Names& names);

} // namespace array

#endif
