#pragma once

#include <filesystem>

#include <SQLiteCpp/Database.h>

namespace array {

// Makes an array.db that nobody has open one of format 1.
inline void makeOlder(const std::filesystem::path& database) {
    SQLite::Database(database.string(), SQLite::OPEN_READWRITE)
        .exec("DROP INDEX unit_lun; CREATE INDEX unit_target ON unit (target); "
              "PRAGMA user_version = 1");
}

inline int formatOf(const std::filesystem::path& database) {
    return SQLite::Database(database.string()).execAndGet("PRAGMA user_version").getInt();
}

} // namespace array
