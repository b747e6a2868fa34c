#include "array/database/WalIndex.h"

#include <cstring>

#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

namespace array {

namespace {

constexpr int regionSize = 32768; // as SQLite maps the index
constexpr std::uint32_t knownVersion = 3007000;

} // namespace

WalIndex::WalIndex(SQLite::Database& database) {
    sqlite3_file* file = nullptr;
    int result = sqlite3_file_control(database.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER,
                                      static_cast<void*>(&file));
    volatile void* region = nullptr;
    if (result == SQLITE_OK) {
        result = file->pMethods->xShmMap(file, 0, regionSize, 0, &region);
    }
    if (result != SQLITE_OK || !region) {
        throw SQLite::Exception("the index of array.db-wal cannot be read",
                                result != SQLITE_OK ? result : SQLITE_IOERR);
    }
    _head = static_cast<char*>(const_cast<void*>(region));
    std::uint32_t version = 0;
    std::memcpy(&version, _head, sizeof version);
    if (version != knownVersion) {
        throw SQLite::Exception("the index of array.db-wal has an unknown form", SQLITE_ERROR);
    }
}

} // namespace array
