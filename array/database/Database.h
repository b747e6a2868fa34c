#pragma once

#include <chrono>
#include <filesystem>

#include <SQLiteCpp/Database.h>

#include "array/model/Records.h"

namespace array {

// How long a change waits for the turns of other processes.
constexpr std::chrono::milliseconds turnTimeout{60000};

// Opens an array.db for reading and writing: durable commits, foreign keys enforced. An older
// format is brought to this one. Throws DRAVOperationFailedException, with advice, if it is
// missing, damaged, of another program or newer. To be used by one thread at a time.
SQLite::Database openDatabase(const std::filesystem::path& file);

// Makes an array.db without objects, with mode 0600, unless there is one. It appears complete or
// not at all. Throws DRAVOperationFailedException.
void createDatabase(const std::filesystem::path& file, const ArrayNames& names);

// Copies an array.db that may be in use into a new file with mode 0600. Throws
// DRAVOperationFailedException, and leaves no file then.
void copyDatabase(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace array
