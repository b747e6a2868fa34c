#include "array/database/Transaction.h"

#include <sqlite3.h>

namespace array {

Transaction::Transaction(SQLite::Database& database, Kind kind) : _database(database) {
    if (isOpen()) {
        _database.exec("ROLLBACK");
    }
    _database.exec(kind == Kind::Read ? "BEGIN" : "BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
    for (int attempts = 0; attempts < 2 && isOpen(); ++attempts) {
        _database.tryExec("ROLLBACK");
    }
}

void Transaction::commit() {
    _database.exec("COMMIT");
}

bool Transaction::isOpen() const {
    return sqlite3_get_autocommit(_database.getHandle()) == 0;
}

} // namespace array
