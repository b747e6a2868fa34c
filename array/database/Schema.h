#pragma once

#include <SQLiteCpp/Database.h>

#include "array/model/Records.h"

namespace array {

// The mark of an array.db in SQLite's header, and the version of what is in it.
constexpr int applicationId = 0x44524156; // "DRAV"
extern const int schemaVersion;

// Makes all tables in an empty database, and the row of an array without objects.
void createSchema(SQLite::Database& database, const ArrayNames& names);

// The version of what is in a database.
int schemaVersionOf(SQLite::Database& database);

// Brings the tables of an older version to this one, or leaves them as they are; several processes
// may try at once. Failures of SQLite pass as SQLite::Exception.
void migrateSchema(SQLite::Database& database);

} // namespace array
